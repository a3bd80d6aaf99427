#include "backup/recovery.h"
#include "form/frm_main.h"
#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/letter_case.h"
#include "text/primitives.h"

namespace rivelt {

void frmMain::Recover_At_Start() {
  Ignoring_Failures([&] {
    if (Routes_With_Unfinished_Updates(*FSO, MSTS_Path).empty()) return;
    const auto lock = FSO->Lock(places::Quenby(MSTS_Path));
    Recover_All(u"");
  });
}

void frmMain::Recover_All(const Text& route_folder) {
  for (const Text& folder : Routes_With_Unfinished_Updates(*FSO, MSTS_Path)) {
    if (Fold_Case(folder) == Fold_Case(route_folder)) {
      Recover(folder);
    } else {
      Recover_Or_Report(folder);
    }
  }
}

Outcome frmMain::Recover(const Text& route_folder) {
  return Recover_Updates(Updates_Of(route_folder),
                         [this](Text_View line) { Report_Recovery(line); });
}

std::optional<Outcome> frmMain::Recover_Or_Report(const Text& route_folder) try {
  return Recover(route_folder);
} catch (const std::exception& failure) {
  // A command that goes on has not failed.
  if (!Recovery_Shown) Keep_Reason(failure);
  Report_Recovery(u"Could not roll back an unfinished update: " + route_folder);
  return std::nullopt;
}

void frmMain::Report_Recovery(Text_View line) {
  Recovery_Lines.emplace_back(line);
  // Without a Yield, which may end the program in the middle.
  if (Recovery_Shown) Form_Window.Append_Log(Concatenate({line, NL}));
}

bool frmMain::Works(const std::function<void()>& step) try {
  step();
  return true;
} catch (const std::exception& failure) {
  Keep_Reason(failure);
  return false;
}

Change_End frmMain::Change_Route(const Text& route_folder, const std::function<void()>& change) {
  using enum Change_End;
  Last_Reason.clear();
  const bool was_locked = Is_Locked();
  if (!Works([&] { Lock(); })) return Lock_Held;
  Full_Check_Next = true;
  Change_End end = Nothing_Touched;
  if (Works([&] { Recover(route_folder); })) {
    end = Works(change) ? Done : Recover_Before_End(route_folder);
  }
  if (end == Done) Last_Reason.clear();
  if (!was_locked) Held_Lock.reset();
  return end;
}

Change_End frmMain::Recover_Before_End(const Text& route_folder) {
  using enum Change_End;
  if (!Is_Locked()) return Lock_Held;
  Full_Check_Next = true;
  const std::optional<Outcome> outcome = Recover_Or_Report(route_folder);
  if (!outcome) return Unfinished;
  if (*outcome == Outcome::Rolled_Back) return Rolled_Back;
  return *outcome == Outcome::Finished ? Done : Nothing_Touched;
}

}  // namespace rivelt
