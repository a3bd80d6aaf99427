#include "app/frm_main.h"
#include "backup/backups.h"
#include "text/primitives.h"

namespace rivelt {

void frmMain::cmdUpdate_Click() try {
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
} catch (const std::exception&) {
  Form_Window.Set_Pointer(Pointer::Default);
  Form_Window.Message_Box(u"Had problems updating this route!", Style_Critical, std::nullopt);
}

void frmMain::Move_Staged_Files() {
  const auto staged_files = FSO->GetFolder(Staging_Folder())->Files();
  const Text route_folder = Current_Route_Folder();
  if (staged_files.Count() == 0) {
    // An earlier Update can have moved everything and failed behind that. If it has not, somebody
    // has removed what it had still to move, and it can only be taken back.
    if (Route_Backups().Is_Unfinished(route_folder)) {
      if (!All_Moved) throw Failure();
      Route_Backups().Complete(route_folder);
    }
    Add_Line(NL + u"No update needed");
    return;
  }
  // Another program can have staged these since somebody removed the folder.
  if (!Installation_Lock || !Installation_Lock->In_Force()) throw Failure();
  for (const auto& file : staged_files) {
    // As a world file it would pass for the route's own among the originals.
    if (file->name() != Local_File && Is_Local_File(file->name())) throw Failure();
  }
  All_Moved = false;
  Route_Backups().Keep_Originals(route_folder, staged_files, Staging_Folder());
  for (const auto& file : staged_files) {
    const Text destination = Destination(file->name());
    FSO->DeleteFile(destination, true);
    file->Move(destination);
  }
  All_Moved = true;
  Route_Backups().Complete(route_folder);
  Add_Line(NL + u"Finished updating ");
}

Text frmMain::Destination(Text_View name) const {
  return Route_File_Path(MSTS_Path, Current_Route_Folder(), name == Local_File, name);
}

}  // namespace rivelt
