#include "backup/flat_backups.h"
#include "backup/recover_updates.h"
#include "form/open_installation.h"
#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/primitives.h"

namespace rivelt {

void Open_Installation::Lock() {
  if (Is_Locked()) return;
  Held_Lock.reset();
  Held_Lock = Files->Lock(places::Quenby(Root));
}

void Open_Installation::Recover_At_Start() {
  const auto has_work = [&] {
    return Files->FolderExists(places::Backups(Root)) &&
           (Has_Unfinished_Flat_Backups(*Files, Root) ||
            !Routes_With_Unfinished_Updates(*Files, Root).empty());
  };
  Ignoring_Failures([&] {
    if (!has_work()) return;
    Lock();
    for (const Text& route : Routes_With_Unfinished_Updates(*Files, Root)) {
      Recover_Or_Report(route);
    }
    for (const Text& route : Keep_Unfinished_Flat_Backups(*Files, Root)) {
      Report_Recovery(u"Could not roll back an unfinished update: ", route);
    }
  });
  Held_Lock.reset();
}

void Open_Installation::Recover_Or_Report(const Text& route_folder) try {
  Recover_Route(route_folder);
} catch (const std::exception&) {
  Report_Recovery(u"Could not roll back an unfinished update: ", route_folder);
}

void Open_Installation::Recover_Route(const Text& route_folder) {
  Recovery recovery;
  const auto report = [&] {
    for (const Text& place : recovery.Set_Aside) {
      Report_Recovery(u"Set aside a file that was changed since the update: ", place);
    }
    if (recovery.Was_Rolled_Back) {
      Report_Recovery(u"Rolled back an unfinished update: ", route_folder);
    }
  };
  try {
    Recover_Updates(*Files, Root, route_folder, recovery);
  } catch (const std::exception&) {
    report();  // what was done so far
    throw;
  }
  report();
}

void Open_Installation::Report_Recovery(Text_View line, Text_View what) {
  Recovery_Lines.push_back(Concatenate({line, what}));
  if (Report) Report(Recovery_Lines.back());
}

Restore_Result Open_Installation::Restore(const Text& route_folder, const Text& time) {
  using enum Restore_Result::End;
  const auto works = [](const auto& step) {
    try {
      step();
      return true;
    } catch (const std::exception&) {
      return false;
    }
  };
  Restore_Result result;
  if (!works([&] { Lock(); })) return {Lock_Held, {}};
  if (!works([&] { Recover_Route(route_folder); })) return {Nothing_Touched, {}};
  Restored_Since_Check = true;
  if (works([&] { result.Files = Restore_Backup(*Files, Root, route_folder, time); })) {
    return result;
  }
  if (!Has_Unfinished_Update(*Files, Root, route_folder)) return {Nothing_Touched, {}};
  Recover_Or_Report(route_folder);
  const bool is_unfinished = Has_Unfinished_Update(*Files, Root, route_folder);
  return {is_unfinished ? Unfinished : Rolled_Back, {}};
}

void Open_Installation::Recover_Before_End(const Text& route_folder) {
  Ignoring_Failures([&] {
    if (Is_Locked()) Recover_Or_Report(route_folder);
  });
}

}  // namespace rivelt
