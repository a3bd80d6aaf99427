#include "programs/cli/console_window.h"

#include "platform/machine.h"
#include "system/fixed_registry.h"
#include "text/primitives.h"
#include "text/utf8.h"

namespace rivelt {

void Console_Window::Start_On(const std::optional<std::string>& root) {
  Named_Root = root;
  if (root) {
    Source = std::make_unique<Fixed_Registry>(*root);
  } else {
    Source = Machine_Registry();
  }
  Start(*Source, Machine_Files);
}

void Console_Window::Write_Log(Text_View text) {
  Memory_Window::Write_Log(text);
  if (!Shows_Log) return;
  Console.End_Line();
  Console.Write(text);
}

void Console_Window::Append_Log(Text_View text) {
  Memory_Window::Append_Log(text);
  if (text.starts_with(u"\r\nFinished updating")) Update_Finished = true;
  if (!Shows_Log) return;
  Console.Write(text);
}

int Console_Window::Message_Box(Text_View text, int style, std::optional<Text_View> title) {
  const bool is_question = (style & Style_Question) != 0;
  if (!is_question || !Yes) {
    if (Shows_Log) Console.End_Line();
    Write_Error(Concatenate({title.value_or(Window_Caption), u": ", text}));
  }
  if ((style & Style_Critical) != 0) Failure_Shown = true;
  const int answer = Memory_Window::Message_Box(text, style, title);
  return is_question && Ask ? Ask() : answer;
}

void Console_Window::Yield() {
  if (End_Requested()) throw Interrupted();
  if (Shows_Log) Console.Show();
  Memory_Window::Yield();
}

void Console_Window::Report_Start() {
  Report();
  Failure_Shown = false;
}

void Console_Window::Report() {
  const std::vector<Text>& lines = Form().Recovery();
  for (; Recovery_Shown < lines.size(); ++Recovery_Shown) {
    const Text& line = lines[Recovery_Shown];
    // The reason of a start that failed has them.
    if (!Shows_Log && Form().Reason().find(line) == Text::npos) Write_Error(line);
  }
  if (Is_Stopped() && !(Shows_Log && Output_Is_Terminal())) {
    Write_Error(Text_View(Log()).substr(0, Log().find(Line_End)));
  }
  if (Form().Reason().empty()) return;
  Write_Error(u"Reason: " + Form().Reason());
  Failure_Shown = true;
}

void Console_Window::Report_Interruption() {
  const std::string start = End_Requested() ? "Interrupted; the " : "The ";
  if (Restore_Finished) {
    Write_Error(start + "restore was finished.");
  } else if (Update_Finished) {
    Write_Error(start + "update was finished.");
  } else {
    Write_Error(start + "route is untouched.");
  }
}

}  // namespace rivelt
