#include "form/frm_main.h"
#include "routes/route_name.h"
#include "routes/trk_file.h"
#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/primitives.h"
#include "text/reasons.h"

namespace rivelt {

bool frmMain::Read_Routes() try {
  Add_Line(u"Reading installed routes");
  const auto folders = FSO->GetFolder(places::Routes(MSTS_Path))->SubFolders();
  for (const auto& folder : folders) Read_Route(*folder);
  return true;
} catch (const std::exception& failure) {
  Keep_Reason(failure);
  Fatal_Error(u"Could not read installed routes!");
  return false;
}

void frmMain::Read_Route(const Folder& folder) {
  const auto text = Trk_Text(folder);
  if (!text) return;
  const Text route_name = Naming_File(Concatenate({folder.name(), u"\\*.trk"}),
                                      [&] { return Route_Display_Name(*text); });
  Installed_Routes.push_back({route_name, folder.name()});
  Ignoring_Failures([&] { Route_Folders.Add(folder.name(), route_name); });
  Ignoring_Failures([&] { Form_Window.Add_Item(Control::cmbRoutes, route_name); });
}

}  // namespace rivelt
