#include "app/frm_main.h"
#include "app/places.h"
#include "text/primitives.h"

namespace rivelt {

void frmMain::cmdUpdate_Click() try {
  Installed.Changed_Since_Check.clear();
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
  if (Installed.Stopped) throw Failure();
  Move_Staged_Files();
  Form_Window.Set_Pointer(Pointer::Default);
  Form_Window.Beep();
} catch (const std::exception&) {
  Form_Window.Set_Pointer(Pointer::Default);
  Form_Window.Message_Box(u"Had problems updating this route!", Style_Critical, std::nullopt);
}

void frmMain::Move_Staged_Files() {
  const auto staged_files = FSO->GetFolder(Staging_Folder())->Files();
  // Without the lock another program can have staged these, or be at work on the route.
  if (!Installed.Is_Locked()) throw Failure();
  Route_Update update(*FSO, MSTS_Path, Current_Route_Folder());
  if (staged_files.Count() == 0) {
    update.Complete_If_All_Moved();
    Add_Line(NL + u"No update needed");
    return;
  }
  update.Keep_Originals(Replacements_By(staged_files));
  for (const auto& file : staged_files) {
    const Text destination = places::Destination(MSTS_Path, Current_Route_Folder(), file->name());
    update.Require_As_Kept(places::Place_Of_Staged(file->name()));
    FSO->DeleteFile(destination, true);
    file->Move(destination);
  }
  update.Complete();
  Installed.Changed_Since_Check = update.Changed_Since_Check();
  Add_Line(NL + u"Finished updating ");
}

std::vector<Replacement> frmMain::Replacements_By(const Collection<File>& staged_files) const {
  std::vector<Replacement> replacements;
  for (const auto& file : staged_files) {
    const Text name = file->name();
    Replacement& replacement = replacements.emplace_back();
    replacement.Place = places::Place_Of_Staged(name);
    replacement.Source = places::Below(places::Staging_Name, name);
    const auto checked = Checked_Files.find(name);
    if (checked != Checked_Files.end()) replacement.As_Checked = checked->second;
  }
  return replacements;
}

}  // namespace rivelt
