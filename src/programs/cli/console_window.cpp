#include "programs/cli/console_window.h"

#include <algorithm>
#include <cstdio>

#include "platform/machine.h"
#include "platform/memory/fixed_registry.h"
#include "programs/cli/watched_files.h"
#include "text/primitives.h"
#include "text/utf8.h"

namespace rivelt {

void Console_Window::Start_On(const std::optional<std::string>& root) {
  if (root) {
    Source = std::make_unique<Fixed_Registry>(*root);
  } else {
    Source = Machine_Registry();
  }
  Start(*Source, [this] { return Watched_Files(Machine_Files(), File_Progress); });
}

void Console_Window::Write_Log(Text_View text) {
  Memory_Window::Write_Log(text);
  if (!Shows_Log) return;
  Clear_Status();
  Console.End_Line();
  Console.Write(text);
}

void Console_Window::Append_Log(Text_View text) {
  Memory_Window::Append_Log(text);
  if (text.starts_with(u"\r\nFinished updating")) Outcome = "the update was finished";
  if (!Shows_Log) return;
  Clear_Status();
  Console.Write(text);
}

int Console_Window::Message_Box(Text_View text, int style, std::optional<Text_View> title) {
  Clear_Status();
  if (Shows_Log) Console.End_Line();
  Write_Error(Concatenate({title.value_or(Window_Caption), u": ", text}));
  if ((style & Style_Critical) != 0) Failure_Shown = true;
  const int answer = Memory_Window::Message_Box(text, style, title);
  return (style & Style_Question) != 0 && Ask ? Ask() : answer;
}

void Console_Window::Yield() {
  if (End_Requested()) throw Interrupted();
  if (Shows_Log) Console.Show();
  if (Shows_Status) Show_Status();
  Memory_Window::Yield();
}

void Console_Window::Report() {
  Clear_Status();
  const std::vector<Text>& lines = Form().Recovery();
  for (; Recovery_Shown < lines.size(); ++Recovery_Shown) {
    if (!Shows_Log) Write_Error(lines[Recovery_Shown]);
  }
  if (Is_Stopped() && !(Shows_Log && Output_Is_Terminal())) Write_Error(Log());
  if (Form().Reason().empty()) return;
  Write_Error(u"Reason: " + Form().Reason());
  Failure_Shown = true;
}

void Console_Window::Report_Interruption() {
  Write_Error("Interrupted; " + std::string(Outcome) + ".");
}

void Console_Window::Show_Status() {
  if (Shown_Pointer() != Pointer::Hourglass || File_Progress.Total == 0) return;
  std::fprintf(stderr, "\r%d of %d files\033[K", std::max(File_Progress.Opened - 1, 0),
               File_Progress.Total);
  Status_Shown = true;
}

void Console_Window::Clear_Status() {
  if (!Status_Shown) return;
  std::fputs("\r\033[K", stderr);
  Status_Shown = false;
}

}  // namespace rivelt
