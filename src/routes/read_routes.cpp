#include "app/frm_main.h"
#include "app/ignoring_failures.h"
#include "app/places.h"
#include "routes/route_name.h"
#include "routes/trk_file.h"
#include "text/primitives.h"

namespace rivelt {

std::optional<Text> Trk_Text(const Folder& route_folder) {
  const auto files = route_folder.Files();
  for (const auto& file : files) {
    if (Upper_Text(Right_Text(file->name(), 4)) != u".TRK") continue;
    return file->OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  }
  return std::nullopt;
}

Text Route_Display_Name(Text_View trk_text) {
  Position position = Find_Text(1, trk_text, u"Name");
  position = Find_Text(position, trk_text, u"(");
  const Text_View rest = Mid_Text(trk_text, position + 1);
  position = Find_Text(1, rest, u")");
  const Text name = Replace_Text(Left_Text(rest, position - 1), {&Double_Quote, 1}, u"");
  return Text(Trim_Text(name));
}

bool frmMain::Read_Routes() try {
  Add_Line(u"Reading installed routes");
  const auto folders = FSO->GetFolder(places::Routes(MSTS_Path))->SubFolders();
  for (const auto& folder : folders) Read_Route(*folder);
  return true;
} catch (const std::exception&) {
  Fatal_Error(u"Could not read installed routes!");
  return false;
}

void frmMain::Read_Route(const Folder& folder) {
  const auto text = Trk_Text(folder);
  if (!text) return;
  const Text route_name = Route_Display_Name(*text);
  Ignoring_Failures([&] { Route_Folders.Add(folder.name(), route_name); });
  Ignoring_Failures([&] { Form_Window.Add_Item(Control::cmbRoutes, route_name); });
}

}  // namespace rivelt
