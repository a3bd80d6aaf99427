#include "window/event_gate.h"

#include <utility>

#include "app/main.h"

namespace rivelt {

void Event_Gate::Start_Up(Registry& registry, Create_File_System_Object create_object) {
  Run([&] { Form = Main(Form_Window, registry, std::move(create_object), Opened); });
}

void Event_Gate::Raise(Control control) {
  if (control == Control::cmdQuit) {
    Close();
  } else if (!Is_Working && Form != nullptr) {
    Run([&] { Run_Event(control); });
  }
}

void Event_Gate::Close() {
  if (Is_Working) {
    Wants_To_Quit = true;
  } else if (Form != nullptr) {
    Form->cmdQuit_Click();
  } else {
    Form_Window.Unload();
  }
}

void Event_Gate::Run(const std::function<void()>& procedure) {
  struct Work {
    explicit Work(bool& working) : Working(working) { Working = true; }
    ~Work() { Working = false; }
    bool& Working;
  };
  {
    const Work work(Is_Working);
    procedure();
  }
  if (Wants_To_Quit) Close();
}

void Event_Gate::Run_Event(Control control) {
  const int index = Row_Of(control).Index;
  switch (control) {
    using enum Control;
    case cmbRoutes:
      return Form->cmbRoutes_Click();
    case optDynamic_0:
    case optDynamic_1:
      return Form->optDynamic_Click(index);
    case txtTrack_0:
    case txtTrack_1:
    case txtTrack_2:
    case txtTrack_3:
    case txtTrack_4:
      return Form->txtTrack_Change(index);
    case cmbTracks_0:
    case cmbTracks_1:
    case cmbTracks_2:
    case cmbTracks_3:
    case cmbTracks_4:
      return Form->cmbTracks_Click(index);
    case cmdCheck:
      return Form->cmdCheck_Click();
    case cmdUpdate:
      return Form->cmdUpdate_Click();
    case cmdSave:
      return Form->cmdSave_Click();
    default:
      return;  // the other controls have no event
  }
}

}  // namespace rivelt
