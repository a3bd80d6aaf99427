// The standard streams of the console program.

#pragma once

#include <string>
#include <string_view>

#include "platform/machine.h"
#include "text/text.h"

namespace rivelt {

// Ends the program in an orderly way: Ctrl-C, or nobody reads the output any more. No handler of
// the program takes it for a failure, so it leaves every procedure at once.
struct Interrupted {};

// Standard output, in UTF-8 with LF as the line end. Throws Interrupted once it cannot be written.
// What is written is kept until Flush or until a block has come together.
class Output {
 public:
  // CR LF becomes LF.
  void Write(Text_View text);
  void Write(std::string_view bytes);

  // Ends a line that has been begun.
  void End_Line();

  void Flush();

  // To be called whenever a line is complete: a person at a terminal sees it at once.
  void Show() {
    if (Is_Terminal) Flush();
  }

 private:
  const bool Is_Terminal = Output_Is_Terminal();
  bool In_Line = false;
};

// A line on standard error; in a text CR LF becomes LF.
void Write_Error(Text_View line);
void Write_Error(std::string_view line);

}  // namespace rivelt
