// The window of the console program: the log goes to standard output, message boxes to standard
// error.

#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "platform/memory/memory_window.h"
#include "programs/cli/output.h"
#include "programs/cli/watched_files.h"

namespace rivelt {

class Console_Window : public Memory_Window {
 public:
  explicit Console_Window(Output& output) : Console(output) {}

  // Starts the program on the installation at root, or on the machine's own without one.
  void Start_On(const std::optional<std::string>& root);

  // Whether the log is shown as it grows; what replaces it begins a line of its own.
  bool Shows_Log = false;

  // Whether standard error shows how far a command has come, on one line that is written over.
  bool Shows_Status = false;

  // What has become of the route, if the program is interrupted now.
  std::string_view Outcome = "the route is untouched";

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

  void Clear_Status();

  // To be called after the start and after each command. Shows on standard error what has been done
  // about unfinished updates since the last call, unless the log is shown, which has it; and why
  // the command has failed.
  void Report();

  // For a program that is to end before its command has.
  void Report_Interruption();

 private:
  void Show_Status();

  // How far a walk over the files of a folder has come, seen from outside of the procedures.
  struct Progress : File_Watcher {
    void Folder_Listed(Long count) override {
      Opened = 0;
      Total = count;
    }
    void File_Opened() override { ++Opened; }

    Long Opened = 0;  // files of the folder listed last that have been opened
    Long Total = 0;   // files in it
  };

  Output& Console;
  std::unique_ptr<Registry> Source;
  Progress File_Progress;
  bool Status_Shown = false;
  bool Failure_Shown = false;
  std::size_t Recovery_Shown = 0;  // so many of its lines
};

}  // namespace rivelt
