// A person in front of the window on Windows: what is done arrives as the messages of mouse and
// keyboard.

#pragma once

#include <set>
#include <vector>

#include "platform/windows/windows_window.h"
#include "window_user.h"

namespace rivelt {

class Windows_Window_User : public Window_User {
 public:
  Windows_Window_User();
  ~Windows_Window_User() override;

  void Start(Registry& registry, Create_File_System_Object create_object) override;
  void Pick(Control list, Text_View entry) override;
  void Type(Control text_box, Text_View text) override;
  void Paste(Control text_box, Text_View text) override;
  void Select(Control option) override { Click(option); }
  void Press(Control button) override { Click(button); }
  void Toggle_Whole_Route() override;
  void Restore(const Text& time) override;
  void Close() override;

  Text Folder_To_Save_In() const override;

  bool Visible() const override { return Screen.Handle() != nullptr; }
  bool Takes_Input(Control control) const override;
  Text Shown_Text(Control control) const override;
  std::vector<Text> Entries(Control list) const override;
  bool Selected(Control option) const override;
  bool Hourglass() const override;
  Seen_Menu Menu() override;
  Windows_Window& Seam() override { return Screen; }

  // A key pressed and released in the control.
  void Key(Control control, WPARAM key);

 private:
  static void CALLBACK Look_For_Dialogs(HWND, UINT, UINT_PTR, DWORD);

  void Click(Control control);
  void Post(Control control, UINT message, WPARAM wparam, LPARAM lparam) const;
  void Let_It_Happen();
  HMENU Open_Menu() const;
  void Pick_From(HMENU menu, int entry);
  void Answer(HWND dialog);
  void Answer_Box(HWND box);

  Windows_Window Screen;
  bool In_The_Middle = false;
  UINT_PTR Timer = 0;
  std::set<HWND> Answered;
};

}  // namespace rivelt
