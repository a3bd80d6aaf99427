#include "form/frm_main.h"
#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/primitives.h"

namespace rivelt {

void frmMain::Do_Check() try {
  Current = Read_Settings();
  if (!Transforms_Changed && !Full_Check_Next && Current == Last) return;
  if (Transforms_Changed || Current.Rows != Last.Rows) Rebuild_Transforms();
  const Text own_catalogue = places::Own_Catalogue(MSTS_Path, Current_Route_Folder());
  if (Current.Whole_Route && FSO->FindFile(own_catalogue)) {
    Keep_Reason(Failure(own_catalogue + u" is there"));
    return Fatal_Error(u"This route has a catalogue of its own in OpenRails!");
  }
  Prepare_Staging_Folder();
  Do_Tsection();
  if (!Stopped) Do_World();
  if (!Stopped) Do_Databases();
  if (!Stopped) Report_Findings();
  Last = Current;
  Transforms_Changed = false;
  Full_Check_Next = false;
} catch (const std::exception& failure) {
  Keep_Reason(failure);
  Fatal_Error(u"Had problems in Do_Check!");
}

frmMain::Check_Settings frmMain::Read_Settings() const {
  Check_Settings settings{Form_Window.Read_Text(Control::cmbRoutes),
                          Form_Window.Read_Value(Control::optDynamic_0),
                          Whole_Route,
                          {}};
  auto* next = settings.Rows.data();
  for (int row = 0; row < Row_Count; ++row) {
    for (const Control control : {txtTrack(row), cmbTracks(row)}) {
      *next++ = Form_Window.Read_Text(control);
    }
  }
  return settings;
}

void frmMain::Rebuild_Transforms() {
  Transforms = {};
  for (std::size_t row = 0; row < Current.Rows.size(); row += 2) {
    const Text& old_text = Current.Rows[row];
    const Text& new_name = Current.Rows[row + 1];
    if (old_text.empty() || new_name.empty()) continue;
    Text old_name(Trim_Text(old_text));
    if (Find_Text(1, old_name, u".s") == 0) old_name += u".s";
    if (Transforms.Find(old_name)) throw Failure(u"two rows have the old shape " + old_name);
    Transforms.Add(new_name, old_name);
  }
}

void frmMain::Prepare_Staging_Folder() {
  Lock();
  Recover_All(Current_Route_Folder());
  Make_Folder(places::Staging(MSTS_Path));
  Checked_Files.clear();
  Changed_Since_Check.clear();
  Found = {};
  Empty_Folder(places::Staging(MSTS_Path));
  const Text databases = places::Staged_Databases(MSTS_Path);
  if (Current.Whole_Route && FSO->FolderExists(databases)) Empty_Folder(databases);
}

void frmMain::Empty_Folder(const Text& path) {
  const auto files = FSO->GetFolder(path)->Files();
  for (const auto& file : files) file->Delete(true);
}

void frmMain::Make_Folder(const Text& path) {
  if (!FSO->FolderExists(path)) FSO->CreateFolder(path);
}

const Text& frmMain::Picked_Route_Folder() const {
  return Route_Folders.Look_Up(Form_Window.Read_Text(Control::cmbRoutes));
}

const Text& frmMain::Current_Route_Folder() const {
  return Route_Folders.Look_Up(Current.Route);
}

void frmMain::Stage(Text_View name, Text_View text, const File_State& original) {
  const Text path = places::Below(places::Staging(MSTS_Path), name);
  const auto stream = FSO->CreateTextFile(path, true, true);
  stream->Write(text);
  Checked_Files[Text(name)] = original;
  stream->Close();
  ++Found.To_Update;
}

// The last lines of a conversion.
void frmMain::Report_Findings() {
  if (Current.Whole_Route) {
    if (Found.Taken != 0) {
      Add_Line(Concatenate({u"Careful: ", Number_Text(Found.Taken),
                            u" undeclared numbers will lead to the moved track"}));
    }
    if (Found.Shared != 0) {
      Add_Line(Concatenate(
          {u"Careful: ", Number_Text(Found.Shared),
           u" track objects have a number of the catalogue that is the route's own, too"}));
    }
    return;
  }
  Ignoring_Failures([this] {
    if (!FSO->FindFile(places::Own_Catalogue(MSTS_Path, Current_Route_Folder()))) return;
    Add_Line(u"Open Rails reads this route's own catalogue, not the global one");
  });
  if (!Found.Stays_Behind()) return;
  Add_Line(Concatenate({NL, u"Stays behind: ", Number_Text(Found.Numbers_Behind),
                        u" numbers in track databases,", Number_Text(Found.Objects_Behind),
                        u" track objects"}));
  Add_Line(u"Only converting the route as a whole moves them");
}

}  // namespace rivelt
