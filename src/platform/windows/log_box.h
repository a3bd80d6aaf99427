// The text box of the log.

#pragma once

#include "platform/windows/win32.h"

namespace rivelt {

// Keeps the whole text itself. What is added reaches the control when Show is called: the cost of
// that grows with the number of lines, and so is paid once for all that came since the last time.
class Log_Box {
 public:
  // Takes the control over as its window procedure too: no key of a dialog is kept from it.
  void Attach(HWND control);

  void Replace(Text_View text);
  void Append(Text_View text);

  // The screen shows the whole text afterwards, but for a carriage return at its end, whose line
  // feed is to come. The newest line is in view if the newest one was before; the selection stays.
  void Show();

  const Text& Content() const { return Whole; }

  // The control's font has changed.
  void Font_Changed();

 private:
  bool Newest_In_View() const;
  void Add_To_Control(const std::wstring& addition);

  HWND Box = nullptr;
  int Line_Height = 1;
  Text Whole;
  std::size_t Shown = 0;  // units of the text that the control has
};

}  // namespace rivelt
