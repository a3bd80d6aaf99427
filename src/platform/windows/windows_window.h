// The window on Windows, of the system's own controls.

#pragma once

#include <array>
#include <optional>

#include "form/event_gate.h"
#include "platform/windows/drop_list.h"
#include "platform/windows/log_box.h"
#include "platform/windows/measures.h"
#include "platform/windows/menu_bar.h"
#include "platform/windows/win32.h"
#include "window/control_states.h"
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
  bool Read_Value(Control option) const override { return option == States.Selected_Option; }
  void Add_Item(Control list, Text_View entry) override;
  void Set_Pointer(Pointer pointer) override;
  int Message_Box(Text_View text, int style, std::optional<Text_View> title) override;
  void Show_Save_Dialog() override;
  Text Save_File_Name() const override { return Chosen_File_Name; }
  Text Ask_For_Folder() override;
  void Beep() override { MessageBeep(MB_OK); }
  void Yield() override;

 private:
  static LRESULT CALLBACK Window_Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

  // Of a list and of an option. A program that changes one by a message may tell nobody.
  static LRESULT CALLBACK Control_Procedure(HWND control, UINT message, WPARAM wparam,
                                            LPARAM lparam, UINT_PTR id, DWORD_PTR window);

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
  bool Presses_By_Enter(const MSG& message);
  bool Type_Into_List(const MSG& message);
  void Press(Control button);
  void Choose(Menu_Entry entry, const Text& backup);

  // A control shows another state, whoever has changed it.
  void Changed(Control control);
  void Take_Over(Control control);
  void Put_Back(Control control);
  void Put_Line(Control text_box, const Text& line, std::size_t caret);
  void Set_Entry(Control list, const Text& entry);
  bool Shows_Its_State(Control list) const;

  void Publish_Entries();
  void Apply_Enabled(const Control_Row& row);

  Event_Gate Gate{*this};
  Menu_Bar Menu{Gate};
  HWND Form = nullptr;
  UINT Dpi = 0;
  Owned_Font Font;
  std::array<HWND, Control_Count> Handles{};
  Control_States States;
  List_Entries<Sorted_List> Entries;
  bool Has_New_Entries = true;
  std::optional<Text> Before_Opening;  // the entry of the list that is open
  Typed_Start Typed;
  Log_Box Log;
  HWND Last_Focus = nullptr;
  Pointer Current_Pointer = Pointer::Default;
  bool Drops_Input = false;
  bool Is_Own_Change = false;
  Repaint_Pace Pace;
  Text Chosen_File_Name;
  Text Last_Saved;
};

}  // namespace rivelt
