#include "backup/update.h"

#include "convert/world_passes.h"
#include "form/frm_main.h"
#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/letter_case.h"
#include "text/primitives.h"

namespace rivelt {

void frmMain::cmdUpdate_Click() try {
  Last_Reason.clear();
  if (Form_Window.Message_Box(u"Are you sure you want to perform an update?",
                              Style_Question + Style_Ok_Cancel, u"Update") != Answer_Ok) {
    return;
  }
  const Text route = Form_Window.Read_Text(Control::cmbRoutes);
  if (route.empty()) {
    Set_Log(u"Please select a route I should update.");
    return;
  }
  Form_Window.Set_Pointer(Pointer::Hourglass);
  Set_Log(Concatenate({u"Updating: ", route, u", this will take some time", NL}));
  Do_Check();
  // What a failed conversion has staged can be a part of the route.
  if (Stopped) throw Failure();
  Move_Staged_Files();
  Form_Window.Set_Pointer(Pointer::Default);
  Form_Window.Beep();
} catch (const std::exception& failure) {
  Report_Failure(failure, u"Had problems updating this route!");
}

void frmMain::Move_Staged_Files() {
  const auto staged_files = FSO->GetFolder(places::Staging(MSTS_Path))->Files();
  // Without the lock another program can have staged these, or be at work on the route.
  if (!Is_Locked()) throw Failure(u"Quenby was removed or replaced since the check; check again");
  const auto databases = Staged_Databases();
  std::vector<Replacement> replacements;
  for (const auto& file : staged_files) {
    replacements.push_back(Replacement_By(file->name(), places::Place_Of_Staged(file->name())));
  }
  for (const auto& file : databases) {
    replacements.push_back(
        Replacement_By(places::Below(places::Databases_Folder, file->name()), file->name()));
  }
  const Updated_Route route = Updates_Of(Current_Route_Folder());
  if (replacements.empty()) {
    Finish_If_All_Moved(route);
    Add_Line(NL + u"No update needed");
    return;
  }
  Update(route, Made_By_Update, replacements,
         [this](Text_View place) { Changed_Since_Check.emplace(place); });
  Add_Line(NL + u"Finished updating ");
  if (Found.Stays_Behind()) Add_Line(u"To move what stays behind, restore the backup first");
  Ignoring_Failures([this] { Report_Changed_Files(); });
}

void frmMain::Report_Changed_Files() {
  for (const Text& place : Changed_Since_Check) {
    Add_Line(u"Had changed since the check, and is in the backup: " + place);
  }
  const auto world = FSO->GetFolder(places::World(MSTS_Path, Current_Route_Folder()));
  const auto files = world->Files();
  for (const auto& file : files) {
    const Text name = file->name();
    if (!Is_World_File(name) || Found.World_Files.contains(Fold_Case(name))) continue;
    Add_Line(u"New since the check, and not converted: " + places::Below(world->name(), name));
  }
}

// Those of a check that has converted the route as a whole.
Collection<File> frmMain::Staged_Databases() const {
  const Text folder = places::Staged_Databases(MSTS_Path);
  if (!Last.Whole_Route || !FSO->FolderExists(folder)) return Collection<File>({});
  return FSO->GetFolder(folder)->Files();
}

// name is below the staging folder.
Replacement frmMain::Replacement_By(Text_View name, Text_View place) const {
  Replacement replacement{.Place = Text(place),
                          .Source = places::Below(places::Staging_Name, name)};
  const auto checked = Checked_Files.find(Text(name));
  if (checked != Checked_Files.end()) replacement.As_Checked = checked->second;
  replacement.Needs_Original = true;
  return replacement;
}

}  // namespace rivelt
