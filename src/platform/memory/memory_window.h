// A window without a screen: for the console program and for tests. What a user would see and do
// are plain members.

#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "form/event_gate.h"
#include "window/control_states.h"
#include "window/list_entries.h"
#include "window/sorted_list.h"
#include "window/window.h"

namespace rivelt {

class Memory_Window : public Window {
 public:
  struct Shown_Box {
    Text Message;
    int Style;
    Text Title;
  };

  // Runs the program up to its prompt.
  void Start(Registry& registry, Create_File_System_Object create_object);
  frmMain& Form() const { return Gate.Started_Form(); }

  // What the user does. False: the control does not take it, being disabled or the program at work,
  // or there is no such entry; nothing has happened then.
  bool Pick(Control list, Text_View entry);
  bool Type(Control text_box, Text_View text);
  bool Select(Control option);
  bool Press(Control button);
  void Close() { Gate.Close(); }

  // The menu, as of an Event_Gate.
  bool Can_Choose(Menu_Entry entry) const { return Gate.Can_Choose(entry); }
  bool Whole_Route() const { return Gate.Whole_Route(); }
  std::vector<Text> Restorable() const { return Gate.Restorable(); }
  void Choose(Menu_Entry entry, const Text& backup = {}) { Gate.Choose(entry, backup); }
  void Toggle_Whole_Route() { Choose(Menu_Entry::Whole_Route); }

  // Prepared answers, taken in their order. Without one a message box is answered by OK and a
  // dialog is cancelled.
  std::deque<int> Box_Answers;
  std::deque<Text> Save_File_Names;
  std::deque<Text> Folders;

  // Runs at each Yield, in the middle of a command.
  std::function<void()> On_Yield;

  // What the user sees.
  bool Takes_Input(Control control) const { return States.Takes_Input(control); }
  bool Enabled(Control control) const { return States.Enabled[Tab(control)]; }
  const Sorted_List& List(Control list) const { return Entries.Of(list); }
  const Text& Log() const { return Log_Text; }
  bool Visible() const { return Is_Visible; }
  Pointer Shown_Pointer() const { return Current_Pointer; }
  int Beeps() const { return Beep_Count; }
  const std::vector<Shown_Box>& Boxes() const { return Shown_Boxes; }

  void Show() override;
  void Unload() override { Is_Visible = false; }
  Text Read_Text(Control control) const override;
  void Write_Log(Text_View text) override { Log_Text = text; }
  void Append_Log(Text_View text) override { Log_Text += text; }
  void Enable(Control control, bool enabled) override { States.Enabled[Tab(control)] = enabled; }
  bool Read_Value(Control option) const override { return option == States.Selected_Option; }
  void Add_Item(Control list, Text_View entry) override { Entries.Add(list, entry); }
  void Set_Pointer(Pointer pointer) override { Current_Pointer = pointer; }
  int Message_Box(Text_View text, int style, std::optional<Text_View> title) override;
  void Show_Save_Dialog() override;
  Text Save_File_Name() const override { return Chosen_File_Name; }
  Text Ask_For_Folder() override;
  void Beep() override { ++Beep_Count; }
  void Yield() override;

 private:
  Event_Gate Gate{*this};
  Control_States States;
  List_Entries<Sorted_List> Entries;
  Text Log_Text;
  bool Is_Visible = false;
  Pointer Current_Pointer = Pointer::Default;
  int Beep_Count = 0;
  std::vector<Shown_Box> Shown_Boxes;
  Text Chosen_File_Name;
};

}  // namespace rivelt
