// The window on Windows, of the system's own controls.

#pragma once

#include <array>

#include "form/event_gate.h"
#include "platform/windows/drop_list.h"
#include "platform/windows/log_box.h"
#include "platform/windows/measures.h"
#include "platform/windows/system_menu.h"
#include "platform/windows/win32.h"
#include "window/list_entries.h"
#include "window/repaint_pace.h"
#include "window/sorted_list.h"
#include "window/window.h"

namespace rivelt {

class Windows_Window : public Window {
 public:
  // The icon is that of the program, if it has one.
  Windows_Window() = default;
  ~Windows_Window() override;
  Windows_Window(const Windows_Window&) = delete;
  Windows_Window& operator=(const Windows_Window&) = delete;

  // Runs the program up to its prompt.
  void Start(Registry& registry, Create_File_System_Object create_object);

  // Handles what the user does until the window is gone.
  void Run();

  // Handles what has come in up to now.
  void Handle_Pending();

  // Null once the window is gone.
  HWND Handle() const { return Form; }
  HWND Handle(Control control) const { return Handles[Tab(control)]; }

  void Show() override;
  void Unload() override;
  Text Read_Text(Control control) const override;
  void Write_Log(Text_View text) override { Log.Replace(text); }
  void Append_Log(Text_View text) override;
  void Enable(Control control, bool enabled) override;
  bool Read_Value(Control option) const override;
  void Add_Item(Control list, Text_View entry) override { Entries.Add(list, entry); }
  void Set_Pointer(Pointer pointer) override;
  int Message_Box(Text_View text, int style, std::optional<Text_View> title) override;
  void Show_Save_Dialog() override;
  Text Save_File_Name() const override { return Chosen_File_Name; }
  void Beep() override { MessageBeep(MB_OK); }
  void Yield() override;

 private:
  static LRESULT CALLBACK Window_Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

  void Create_Window();
  void Create_Control(const Control_Row& row);
  void Size_Form();
  void Lay_Out();
  void Change_Dpi(UINT dpi, const RECT& suggested);

  LRESULT Take_Message(UINT message, WPARAM wparam, LPARAM lparam);
  void Take_Notification(Control control, UINT code);

  // Shows the whole log, and drops the input that came while a procedure worked and has not been
  // looked at yet: after the work, or before a dialog, which it would answer.
  void Finish_Work();

  // The user's input before it reaches a control. Input that comes while a procedure works is
  // dropped, but for what reads the log and what asks for the end.
  void Handle_Message(MSG& message);
  void Handle_While_Working(MSG& message);
  bool Type_Into_List(const MSG& message);
  void Raise(Control control);
  void Restore(const Text& time);

  // The list that the window is or is a part of; null for any other window.
  Drop_List* List_Of(HWND window);
  Drop_List* List_Of(Control control);
  void Apply_Enabled(const Control_Row& row);

  Event_Gate Gate{*this};
  System_Menu Menu{Gate, [this](const Text& time) { Restore(time); }};
  HWND Form = nullptr;
  UINT Dpi = 0;
  Owned_Font Font;
  std::array<HWND, Control_Count> Handles{};
  std::array<bool, Control_Count> Enabled_States = Enabled_States_At_Start;
  std::array<Drop_List, Control_Count> Lists;  // of the controls that are lists
  List_Entries<Sorted_List> Entries;
  Log_Box Log;
  HWND Last_Focus = nullptr;
  Pointer Current_Pointer = Pointer::Default;
  bool Drops_Input = false;
  Repaint_Pace Pace;
  Text Chosen_File_Name;
};

}  // namespace rivelt
