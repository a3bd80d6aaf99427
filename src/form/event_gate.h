// The way of the user's events into the form.

#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "form/frm_main.h"
#include "window/controls.h"
#include "window/menu.h"

namespace rivelt {

// Runs the procedures of the form one at a time. Start-up, Check, Update and Save let the window
// handle events in the middle of their work: an event that comes then is dropped and not kept for
// later, so that nothing changes under a running command and none starts inside another. Only the
// wish to quit is kept, and met when the procedure has ended.
class Event_Gate {
 public:
  explicit Event_Gate(Window& window) : Form_Window(window) {}
  Event_Gate(const Event_Gate&) = delete;
  Event_Gate& operator=(const Event_Gate&) = delete;

  // Starts the program on the window. The form goes with the gate, and the lock with it.
  void Start_Up(Registry& registry, Create_File_System_Object create_object);

  // After the start.
  frmMain& Started_Form() const { return *Form; }

  // The user has pressed, picked, selected or changed the control.
  void Raise(Control control);

  // The menu: whether an entry can be chosen now, the check mark of Whole_Route, and the entries
  // of the Restore sub-menu; backup is one of them. Choosing an entry that cannot be chosen does
  // nothing.
  bool Can_Choose(Menu_Entry entry) const;
  bool Whole_Route() const { return Form != nullptr && Form->Is_Whole_Route(); }
  std::vector<Text> Restorable() const;
  void Choose(Menu_Entry entry, const Text& backup = {});

  // The user wants the window gone, by Quit or by the platform's own means.
  void Close();

  // Whether a procedure is at work, so that input is to be dropped.
  bool Working() const { return Is_Working; }

 private:
  void Run(const std::function<void()>& procedure);
  void Run_Event(const Control_Row& row);
  void Open_Installation();

  Window& Form_Window;
  Create_File_System_Object Create_Object;
  std::unique_ptr<Registry> Chosen;  // has the folder that the user has opened
  std::unique_ptr<frmMain> Form;     // null until the start has ended
  bool Is_Working = false;
  bool Wants_To_Quit = false;
};

}  // namespace rivelt
