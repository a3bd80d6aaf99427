#include "form/frm_main.h"
#include "system/places.h"
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
  Keep_Reason(failure);
  Form_Window.Set_Pointer(Pointer::Default);
  Form_Window.Message_Box(u"Had problems updating this route!", Style_Critical, std::nullopt);
}

void frmMain::Move_Staged_Files() {
  const auto staged_files = FSO->GetFolder(places::Staging(MSTS_Path))->Files();
  // Without the lock another program can have staged these, or be at work on the route.
  if (!Is_Locked()) throw Failure();
  Route_Update update(*FSO, MSTS_Path, Current_Route_Folder());
  const auto databases = Staged_Databases();
  if (staged_files.Count() == 0 && databases.Count() == 0) {
    update.Complete_If_All_Moved();
    Add_Line(NL + u"No update needed");
    return;
  }
  std::vector<Replacement> replacements;
  for (const auto& file : staged_files) {
    replacements.push_back(Replacement_By(file->name(), places::Place_Of_Staged(file->name())));
  }
  for (const auto& file : databases) {
    replacements.push_back(
        Replacement_By(places::Below(places::Databases_Folder, file->name()), file->name()));
  }
  update.Keep_Originals(replacements);
  for (const auto& file : staged_files) {
    Replace(update, *file, places::Place_Of_Staged(file->name()));
  }
  for (const auto& file : databases) Replace(update, *file, file->name());
  update.Complete();
  Add_Line(NL + u"Finished updating ");
  for (const Text& place : update.Changed_Since_Check()) {
    Add_Line(u"Had changed since the check, and is in the backup: " + place);
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
  Replacement replacement;
  replacement.Place = place;
  replacement.Source = places::Below(places::Staging_Name, name);
  const auto checked = Checked_Files.find(Text(name));
  if (checked != Checked_Files.end()) replacement.As_Checked = checked->second;
  return replacement;
}

void frmMain::Replace(const Route_Update& update, File& file, Text_View place) {
  const Text destination = places::Destination(MSTS_Path, Current_Route_Folder(), place);
  update.Require_As_Kept(place);
  FSO->DeleteFile(destination, true);
  file.Move(destination);
}

}  // namespace rivelt
