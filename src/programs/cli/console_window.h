// The window of the console program: the log goes to standard output, message boxes to standard
// error.

#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "platform/memory/memory_window.h"
#include "programs/cli/output.h"

namespace rivelt {

class Console_Window : public Memory_Window {
 public:
  explicit Console_Window(Output& output) : Console(output) {}

  // The folder that Start_On was given.
  std::optional<std::string> Named_Root;

  // Starts the program on the installation at root, or on the machine's own without one.
  void Start_On(const std::optional<std::string>& root);

  // Whether the log is shown as it grows; what replaces it begins a line of its own.
  bool Shows_Log = false;

  // Whether no command asks.
  bool Yes = false;

  // Whether an update, or a restore, was finished.
  bool Update_Finished = false;
  bool Restore_Finished = false;

  // Answers a message box that asks. Without it the prepared answers count.
  std::function<int()> Ask;

  // Whether the program has reported a failure: by a message box, by stopping, or by a reason
  // alone.
  bool Failed() const { return Failure_Shown || Is_Stopped(); }
  bool Is_Stopped() const { return !Enabled(Control::cmbRoutes); }

  void Write_Log(Text_View text) override;
  void Append_Log(Text_View text) override;
  int Message_Box(Text_View text, int style, std::optional<Text_View> title) override;
  void Yield() override;

  // To be called after the start. An update that could not be rolled back does not count as a
  // failure.
  void Report_Start();

  // To be called after each command. Shows on standard error what has been done
  // about unfinished updates since the last call, unless the log is shown, which has it; and why
  // the command has failed.
  void Report();

  // For an update that was finished after a reported failure.
  void Forget_Failure() { Failure_Shown = false; }

  // For a program that is to end before its command has.
  void Report_Interruption();

 private:
  Output& Console;
  std::unique_ptr<Registry> Source;
  bool Failure_Shown = false;
  std::size_t Recovery_Shown = 0;  // so many of its lines
};

}  // namespace rivelt
