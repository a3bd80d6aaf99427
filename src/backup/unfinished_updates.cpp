#include "app/frm_main.h"
#include "app/ignoring_failures.h"
#include "backup/backups.h"
#include "text/primitives.h"

namespace rivelt {

Backups frmMain::Route_Backups() const {
  return Backups(*FSO, MSTS_Path);
}

void frmMain::Lock_Installation() {
  Make_Staging_Folder();
  if (Installation_Lock && Installation_Lock->In_Force()) return;
  Installation_Lock.reset();
  Installation_Lock = FSO->Lock(Staging_Folder());
}

void frmMain::Take_Back_Unfinished_Updates() {
  for (const Text& route_folder : Route_Backups().Unfinished()) {
    Route_Backups().Take_Back(route_folder);
    Add_Line(Concatenate({u"Took back an update that had not finished: ", route_folder}));
  }
}

void frmMain::Take_Back_At_Start() {
  std::vector<Text> unfinished;
  Ignoring_Failures([&] {
    unfinished = Route_Backups().Unfinished();
    if (unfinished.empty()) return;
    Lock_Installation();
    unfinished = Route_Backups().Unfinished();  // another program may just have come to its end
  });
  for (const Text& route_folder : unfinished) {
    bool taken_back = false;
    Ignoring_Failures([&] {
      if (!Installation_Lock) return;
      Route_Backups().Take_Back(route_folder);
      taken_back = true;
    });
    const Text_View report = taken_back ? u"Took back an update that had not finished: "
                                        : u"Could not take back an unfinished update: ";
    Add_Line(Concatenate({report, route_folder}));
  }
  Installation_Lock.reset();
}

bool frmMain::Restore_Backup(const Backup& backup) try {
  Lock_Installation();
  Take_Back_Unfinished_Updates();
  Route_Backups().Restore(backup);
  Last_Route.clear();  // what was staged for the files that have gone must not be moved over these
  return true;
} catch (const std::exception&) {
  return false;
}

}  // namespace rivelt
