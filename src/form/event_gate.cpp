#include "form/event_gate.h"

#include <functional>
#include <utility>

#include "form/main.h"
#include "system/fixed_registry.h"
#include "system/ignoring_failures.h"
#include "text/utf8.h"

namespace rivelt {

void Event_Gate::Start_Up(Registry& registry, Create_File_System_Object create_object) {
  Create_Object = std::move(create_object);
  Run([&] { Form = Main(Form_Window, registry, Create_Object); });
}

void Event_Gate::Raise(Control control) {
  if (control == Quit_Control) {
    Close();
  } else if (!Is_Working && Form != nullptr) {
    Run([&] { Run_Event(Row_Of(control)); });
  }
}

bool Event_Gate::Can_Choose(Menu_Entry entry) const {
  return !Is_Working && Form != nullptr && Form->Can_Choose(entry);
}

std::vector<Text> Event_Gate::Restorable() const {
  return Can_Choose(Menu_Entry::Whole_Route) ? Form->Restorable() : std::vector<Text>();
}

void Event_Gate::Choose(Menu_Entry entry, const Text& backup) {
  if (!Can_Choose(entry)) return;
  if (entry == Menu_Entry::Open_Installation) return Run([this] { Open_Installation(); });
  const auto choose = [&] { Form->Choose(entry, backup); };
  Run(std::ref(choose));  // whose copy needs no memory
}

void Event_Gate::Open_Installation() {
  Text folder;
  Ignoring_Failures([&] { folder = Form_Window.Ask_For_Folder(); });
  if (folder.empty()) return;
  Form.reset();  // and with it the lock
  Chosen = std::make_unique<Fixed_Registry>(To_Original_Bytes(folder));
  Form = Main(Form_Window, *Chosen, Create_Object);
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
