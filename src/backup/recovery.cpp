#include "app/frm_main.h"
#include "app/ignoring_failures.h"
#include "app/places.h"
#include "backup/flat_backups.h"

namespace rivelt {

void frmMain::Lock_Installation() {
  if (Installation_Lock && Installation_Lock->In_Force()) return;
  Installation_Lock.reset();
  Installation_Lock = FSO->Lock(places::Quenby(MSTS_Path));
}

void frmMain::Recover_At_Start() {
  const auto has_work = [&] {
    return FSO->FolderExists(places::Backups(MSTS_Path)) &&
           (Has_Unfinished_Flat_Backups(*FSO, MSTS_Path) ||
            !Routes_With_Unfinished_Updates(*FSO, MSTS_Path).empty());
  };
  Ignoring_Failures([&] {
    if (!has_work()) return;
    Lock_Installation();
    for (const Text& route : Routes_With_Unfinished_Updates(*FSO, MSTS_Path)) {
      Recover_Or_Report(route);
    }
    for (const Text& route : Keep_Unfinished_Flat_Backups(*FSO, MSTS_Path)) {
      Report_Recovery(u"Could not roll back an unfinished update: ", route);
    }
  });
  Installation_Lock.reset();
}

void frmMain::Recover_Or_Report(const Text& route_folder) try {
  Recover_Route(route_folder);
} catch (const std::exception&) {
  Report_Recovery(u"Could not roll back an unfinished update: ", route_folder);
}

void frmMain::Recover_Route(const Text& route_folder) {
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
    Recover_Updates(*FSO, MSTS_Path, route_folder, recovery);
  } catch (const std::exception&) {
    report();  // what was done so far
    throw;
  }
  report();
}

void frmMain::Report_Recovery(Text_View line, Text_View what) {
  Recovery_Report.push_back(Concatenate({line, what}));
  Add_Line(Recovery_Report.back());
}

Restore_Result frmMain::Restore(const Text& route_folder, const Text& time) {
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
  if (!works([&] { Lock_Installation(); })) return {Lock_Held, {}};
  if (!works([&] { Recover_Route(route_folder); })) return {Nothing_Touched, {}};
  Last_Route.clear();  // what is staged must not be moved over the restored files
  if (works([&] { result.Files = Restore_Backup(*FSO, MSTS_Path, route_folder, time); })) {
    return result;
  }
  if (!Has_Unfinished_Update(*FSO, MSTS_Path, route_folder)) return {Nothing_Touched, {}};
  Recover_Or_Report(route_folder);
  const bool is_unfinished = Has_Unfinished_Update(*FSO, MSTS_Path, route_folder);
  return {is_unfinished ? Unfinished : Rolled_Back, {}};
}

void frmMain::Recover_Before_End() {
  Ignoring_Failures([&] {
    if (!Installation_Lock || !Installation_Lock->In_Force()) return;
    Recover_Or_Report(Current_Route_Folder());
  });
}

}  // namespace rivelt
