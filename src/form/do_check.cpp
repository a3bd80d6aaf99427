#include "backup/recover_updates.h"
#include "form/frm_main.h"
#include "system/places.h"
#include "text/primitives.h"

namespace rivelt {

void frmMain::Do_Check() try {
  if (Transforms_Changed) {
    Rebuild_Transforms();
  } else if (Settings_Unchanged()) {
    return;
  }
  const Text own_catalogue = places::Own_Catalogue(MSTS_Path, Current_Route_Folder());
  if (Whole_Route && FSO->FindFile(own_catalogue)) {
    return Fatal_Error(u"This route has a catalogue of its own in OpenRails!");
  }
  Prepare_Staging_Folder();
  Do_Tsection();
  Do_World();
  if (!Stopped) Do_Databases();
  Last_Route = Form_Window.Read_Text(Control::cmbRoutes);
  Last_Option = Form_Window.Read_Value(Control::optDynamic_0);
  Last_Whole = Whole_Route;
  Transforms_Changed = false;
  Restored_Since_Check = false;
} catch (const std::exception& failure) {
  Keep_Reason(failure);
  Fatal_Error(u"Had problems in Do_Check!");
}

bool frmMain::Settings_Unchanged() const {
  return !Restored_Since_Check && Form_Window.Read_Text(Control::cmbRoutes) == Last_Route &&
         Form_Window.Read_Value(Control::optDynamic_0) == Last_Option && Whole_Route == Last_Whole;
}

void frmMain::Rebuild_Transforms() {
  Transforms = {};
  for (int row = 0; row < Row_Count; ++row) {
    const Text old_text = Form_Window.Read_Text(txtTrack(row));
    const Text new_name = Form_Window.Read_Text(cmbTracks(row));
    if (old_text.empty() || new_name.empty()) continue;
    Text old_name(Trim_Text(old_text));
    if (Find_Text(1, old_name, u".s") == 0) old_name += u".s";
    Transforms.Add(new_name, old_name);
  }
}

void frmMain::Prepare_Staging_Folder() {
  Make_Folder(places::Quenby(MSTS_Path));
  Lock();
  Recover_Updates(*FSO, MSTS_Path, Current_Route_Folder(),
                  [this](Text_View line) { Report_Recovery(line); });
  Make_Folder(places::Staging(MSTS_Path));
  Checked_Files.clear();
  Empty_Folder(places::Staging(MSTS_Path));
  const Text databases = places::Staged_Databases(MSTS_Path);
  if (Whole_Route && FSO->FolderExists(databases)) Empty_Folder(databases);
}

void frmMain::Empty_Folder(const Text& path) {
  const auto files = FSO->GetFolder(path)->Files();
  for (const auto& file : files) file->Delete(true);
}

void frmMain::Make_Folder(const Text& path) {
  if (!FSO->FolderExists(path)) FSO->CreateFolder(path);
}

const Text& frmMain::Current_Route_Folder() const {
  return Route_Folders.Look_Up(Form_Window.Read_Text(Control::cmbRoutes));
}

void frmMain::Stage(Text_View name, Text_View text, const File_State& original) {
  const Text path = places::Below(places::Staging(MSTS_Path), name);
  const auto stream = FSO->CreateTextFile(path, true, true);
  stream->Write(text);
  Checked_Files[Text(name)] = original;
  stream->Close();
}

}  // namespace rivelt
