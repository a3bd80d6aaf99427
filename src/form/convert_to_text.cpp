#include "binary/binary_file.h"
#include "convert/world_passes.h"
#include "form/frm_main.h"
#include "routes/trk_file.h"
#include "system/places.h"
#include "text/primitives.h"
#include "text/reasons.h"

namespace rivelt {
namespace {

constexpr Text_View Made_By_Conversion = u"conversion to text";

// A text has two bytes for a digit, and more digits than a number has bytes.
constexpr std::uint64_t Growth = 3;

}  // namespace

Binary_Files frmMain::Binary_Files_Of(const Text& route_folder) {
  Binary_Files found;
  const auto look_at = [&](File& file, const Text& place) {
    Form_Window.Yield();
    const Text read = file.OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
    if (!Is_Binary(read)) return;
    found.Places.push_back(place);
    found.Text_Bytes += Growth * Uncompressed_Size(read, file.State().Size);
  };
  const auto world = FSO->GetFolder(places::World(MSTS_Path, route_folder))->Files();
  for (const auto& file : world) {
    if (!Is_World_File(file->name())) continue;
    look_at(*file, places::Below(places::World_Folder, file->name()));
  }
  for (const auto& file : Track_Databases(*FSO, places::Route(MSTS_Path, route_folder))) {
    look_at(*file, file->name());
  }
  return found;
}

Change_End frmMain::Convert_To_Text(const Text& route_folder, std::vector<Text>& converted) {
  return Change_Route(route_folder, [&] {
    converted = Binary_Files_Of(route_folder).Places;
    if (converted.empty()) return;
    std::vector<Replacement> replacements;
    for (const Text& place : converted) {
      Replacement& replacement = replacements.emplace_back();
      replacement.Place = place;
      replacement.Make = [&](const Text& path) { Write_As_Text(route_folder, place, path); };
      replacement.Needs_Original = true;
    }
    Update(Updates_Of(route_folder), Made_By_Conversion, replacements, [](Text_View) {});
  });
}

void frmMain::Write_As_Text(const Text& route_folder, const Text& place, const Text& path) {
  Form_Window.Yield();
  const auto file = FSO->GetFile(places::Below(places::Route(MSTS_Path, route_folder), place));
  const Text read = file->OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  const auto size = file->State().Size;
  const Text text = Naming_File(place, [&] { return Text_Of_Binary(read, size); });
  const auto stream = FSO->CreateTextFile(path, false, true);
  stream->Write(text);
  stream->Close();
}

void frmMain::Convert_From_Menu() try {
  Last_Reason.clear();
  if (Form_Window.Message_Box(
          u"Are you sure you want to convert this route's binary files to text?",
          Style_Question + Style_Ok_Cancel, u"Convert") != Answer_Ok) {
    return;
  }
  Form_Window.Set_Pointer(Pointer::Hourglass);
  Set_Log(Concatenate({u"Converting: ", Form_Window.Read_Text(Control::cmbRoutes), NL}));
  std::vector<Text> converted;
  if (Convert_To_Text(Picked_Route_Folder(), converted) != Change_End::Done) throw Failure();
  for (const Text& place : converted) Add_Line(place);
  if (converted.empty()) {
    Add_Line(u"No binary files");
  } else {
    Add_Line(Number_Text(static_cast<Double>(converted.size())) + u" files converted");
  }
  Add_Line(u"Finished converting ");
  Form_Window.Set_Pointer(Pointer::Default);
  Form_Window.Beep();
} catch (const std::exception& failure) {
  Report_Failure(failure, u"Had problems converting this route's files!");
}

}  // namespace rivelt
