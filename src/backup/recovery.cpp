#include "backup/flat_backups.h"
#include "backup/recover_updates.h"
#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/primitives.h"

namespace rivelt {

void Recover_At_Start(File_System_Object& files, Text_View root, const Log_Line& report) {
  Ignoring_Failures([&] {
    const bool has_work = files.FolderExists(places::Backups(root)) &&
                          (Has_Unfinished_Flat_Backups(files, root) ||
                           !Routes_With_Unfinished_Updates(files, root).empty());
    if (!has_work) return;
    const auto lock = files.Lock(places::Quenby(root));
    for (const Text& route : Routes_With_Unfinished_Updates(files, root)) {
      Recover_Or_Report(files, root, route, report);
    }
    for (const Text& route : Keep_Unfinished_Flat_Backups(files, root)) {
      report(u"Could not roll back an unfinished update: " + route);
    }
  });
}

void Recover_Or_Report(File_System_Object& files, Text_View root, const Text& route,
                       const Log_Line& report) try {
  Recover_Updates(files, root, route, report);
} catch (const std::exception&) {
  report(u"Could not roll back an unfinished update: " + route);
}

void Recover_Updates(File_System_Object& files, Text_View root, Text_View route,
                     const Log_Line& report) {
  Recovery recovery;
  const auto report_recovery = [&] {
    for (const Text& place : recovery.Set_Aside) {
      report(u"Set aside a file that was changed since the update: " + place);
    }
    if (recovery.Was_Rolled_Back) {
      report(Concatenate({u"Rolled back an unfinished update: ", route}));
    }
  };
  try {
    Recover_Updates(files, root, route, recovery);
  } catch (const std::exception&) {
    report_recovery();  // what was done so far
    throw;
  }
  report_recovery();
}

Restore_Result Restore_Route(File_System_Object& files, Text_View root, const Text& route,
                             const Text& time, const Log_Line& report) {
  using enum Restore_Result::End;
  const auto works = [](const auto& step) {
    try {
      step();
      return true;
    } catch (const std::exception&) {
      return false;
    }
  };
  if (!works([&] { Recover_Updates(files, root, route, report); })) return {Nothing_Touched, {}};
  Restore_Result result;
  if (works([&] { result.Files = Restore_Backup(files, root, route, time); })) return result;
  if (!Has_Unfinished_Update(files, root, route)) return {Nothing_Touched, {}};
  Recover_Or_Report(files, root, route, report);
  const bool is_unfinished = Has_Unfinished_Update(files, root, route);
  return {is_unfinished ? Unfinished : Rolled_Back, {}};
}

}  // namespace rivelt
