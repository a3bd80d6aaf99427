#include "form/event_gate.h"

#include <utility>

#include "form/main.h"

namespace rivelt {

void Event_Gate::Start_Up(Registry& registry, Create_File_System_Object create_object) {
  Run([&] { Form = Main(Form_Window, registry, std::move(create_object)); });
}

void Event_Gate::Raise(Control control) {
  if (control == Quit_Control) {
    Close();
  } else if (!Is_Working && Form != nullptr) {
    Run([&] { Run_Event(Row_Of(control)); });
  }
}

void Event_Gate::Toggle_Whole_Route() {
  if (Menu_Enabled()) Form->Toggle_Whole_Route();
}

std::vector<Text> Event_Gate::Restorable() const {
  return Menu_Enabled() ? Form->Restorable() : std::vector<Text>();
}

void Event_Gate::Restore(const Text& time) {
  if (Menu_Enabled()) Run([&] { Form->Restore_From_Menu(time); });
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

void Event_Gate::Run_Event(const Control_Row& row) {
  switch (row.Raises) {
    case Event::cmbRoutes_Click:
      return Form->cmbRoutes_Click();
    case Event::optDynamic_Click:
      return Form->optDynamic_Click(row.Index);
    case Event::txtTrack_Change:
      return Form->txtTrack_Change(row.Index);
    case Event::cmbTracks_Click:
      return Form->cmbTracks_Click(row.Index);
    case Event::cmdCheck_Click:
      return Form->cmdCheck_Click();
    case Event::cmdUpdate_Click:
      return Form->cmdUpdate_Click();
    case Event::cmdSave_Click:
      return Form->cmdSave_Click();
    case Event::cmdQuit_Click:  // by Close alone
    case Event::None:
      return;
  }
}

}  // namespace rivelt
