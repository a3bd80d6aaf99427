// The window on a screen, with Qt. The application object must exist before it and outlive it.

#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

#include "form/event_gate.h"
#include "platform/qt/build_widgets.h"
#include "platform/qt/entry_model.h"
#include "platform/qt/input_filter.h"
#include "window/control_states.h"
#include "window/repaint_pace.h"
#include "window/window.h"

class QComboBox;

namespace rivelt {

class Log_View;

class Qt_Window : public Window {
 public:
  Qt_Window();

  // Runs the program up to its prompt.
  void Start(Registry& registry, Create_File_System_Object create_object);

  // Runs when the window has gone.
  std::function<void()> On_Unload;

  QWidget& Form_Widget() { return Form; }
  QWidget& Client_Widget() { return Client; }
  QWidget& Widget(Control control) const { return *All[Tab(control)]; }

  void Show() override;
  void Unload() override;
  Text Read_Text(Control control) const override;
  void Write_Log(Text_View text) override;
  void Append_Log(Text_View text) override;
  void Enable(Control control, bool enabled) override { Widget(control).setEnabled(enabled); }
  bool Read_Value(Control option) const override { return option == States.Selected_Option; }
  void Add_Item(Control list, Text_View entry) override;
  void Set_Pointer(Pointer pointer) override;
  int Message_Box(Text_View text, int style, std::optional<Text_View> title) override;
  void Show_Save_Dialog() override;
  Text Save_File_Name() const override { return Chosen_File_Name; }
  Text Ask_For_Folder() override;
  void Beep() override;
  void Yield() override;

 private:
  // Turns the wish to close into an event of the gate: only Unload lets the window go.
  struct Form_With_Close : QWidget {
    void closeEvent(QCloseEvent* event) override;
    std::function<void()> On_Close;
  };

  void Build_Form();
  void Connect(const Control_Row& row);
  void Press(Control button);
  void Choose(Menu_Entry entry, const Text& backup);

  // A control shows another state, whoever has changed it.
  void Changed(Control control);
  void Take_Over(Control control);
  void Put_Back(Control control);
  void Put_Line(Control text_box, const Text& line, std::size_t caret);

  // Brings everything on the screen that a procedure has left to its end, and drops the input that
  // came while it worked.
  void Finish_Work();
  void Drop_Pending_Input();
  void Publish_Entries();
  void Publish(Entry_Model& model);
  QComboBox* List_Of(Control control) const;  // null: it is no list
  Log_View& Log() const;

  List_Entries<Entry_Model> Entries;
  Form_With_Close Form;
  QWidget Client{&Form};  // below the menu bar
  Widgets All{};
  Control_States States;  // but for which controls are enabled, which their widgets know
  bool Is_Own_Change = false;
  Event_Gate Gate{*this};
  std::unique_ptr<Input_Filter> Filter;
  bool Is_Dropping = false;
  Pointer Current_Pointer = Pointer::Default;
  Repaint_Pace Pace;
  Text Chosen_File_Name;
  Text Last_Saved;
};

}  // namespace rivelt
