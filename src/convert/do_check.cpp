#include "app/frm_main.h"
#include "text/primitives.h"

namespace rivelt {

void frmMain::Do_Check() try {
  if (Transforms_Changed) {
    Rebuild_Transforms();
  } else if (Settings_Unchanged()) {
    return;
  }
  Prepare_Staging_Folder();
  Do_Tsection();
  Do_World();
  Last_Route = Form_Window.Read_Text(Control::cmbRoutes);
  Last_Option = Form_Window.Read_Value(Control::optDynamic_0);
  Transforms_Changed = false;
} catch (const std::exception&) {
  Fatal_Error(u"Had problems in Do_Check!");
}

bool frmMain::Settings_Unchanged() const {
  return Form_Window.Read_Text(Control::cmbRoutes) == Last_Route &&
         Form_Window.Read_Value(Control::optDynamic_0) == Last_Option;
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
  Lock_Installation();
  Take_Back_Unfinished_Updates();
  const auto staged_files = FSO->GetFolder(Staging_Folder())->Files();
  for (const auto& file : staged_files) file->Delete(true);
}

void frmMain::Make_Staging_Folder() {
  if (FSO->FolderExists(Staging_Folder())) return;
  const Text parent = MSTS_Path + u"\\Quenby";
  if (!FSO->FolderExists(parent)) FSO->CreateFolder(parent);
  FSO->CreateFolder(Staging_Folder());
}

Text frmMain::Staging_Folder() const {
  return MSTS_Path + u"\\Quenby\\tmp";
}

const Text& frmMain::Current_Route_Folder() const {
  return Route_Folders.Look_Up(Form_Window.Read_Text(Control::cmbRoutes));
}

Text frmMain::Route_Folder() const {
  return Concatenate({MSTS_Path, u"\\routes\\", Current_Route_Folder()});
}

void frmMain::Stage(Text_View name, Text_View text) {
  const auto stream = FSO->CreateTextFile(Concatenate({Staging_Folder(), u"\\", name}), true, true);
  stream->Write(text);
  stream->Close();
}

}  // namespace rivelt
