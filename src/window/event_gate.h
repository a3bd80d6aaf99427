// The way of the user's events into the form.

#pragma once

#include <functional>

#include "window/controls.h"

namespace rivelt {

class frmMain;
class Window;

// Runs the procedures of the form one at a time. Start-up, Check, Update and Save let the window
// handle events in the middle of their work: an event that comes then is dropped and not kept for
// later, so that nothing changes under a running command and none starts inside another. Only the
// wish to quit is kept, and met when the procedure has ended.
class Event_Gate {
 public:
  explicit Event_Gate(Window& window) : Form_Window(window) {}
  Event_Gate(const Event_Gate&) = delete;
  Event_Gate& operator=(const Event_Gate&) = delete;

  // Starts the program: start shows the window, initialises the form and gives it.
  void Start_Up(const std::function<frmMain&()>& start);

  // The user has pressed, picked, selected or changed the control.
  void Raise(Control control);

  // The user wants the window gone, by Quit or by the platform's own means.
  void Close();

  // Whether a procedure is at work, so that input is to be dropped.
  bool Working() const { return Is_Working; }

 private:
  void Run(const std::function<void()>& procedure);
  void Run_Event(Control control);

  Window& Form_Window;
  frmMain* Form = nullptr;
  bool Is_Working = false;
  bool Wants_To_Quit = false;
};

}  // namespace rivelt
