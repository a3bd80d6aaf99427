#include "convert/count_references.h"

#include "binary/binary_file.h"
#include "convert/rebase_tsection.h"
#include "convert/world_passes.h"
#include "form/frm_main.h"
#include "routes/trk_file.h"
#include "system/places.h"
#include "text/reasons.h"

namespace rivelt {

Route_References frmMain::References_Of(const Text& route_folder) {
  const auto read = [this](File& file) {
    Form_Window.Yield();
    return file.OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  };
  Rebased_Tsection local;
  if (const auto file = FSO->FindFile(places::Local_Catalogue(MSTS_Path, route_folder))) {
    const Text text = read(*file);
    local = Naming_File(places::Tsection, [&] {
      return Rebase_Tsection(text, Reserved_Sections, Reserved_Shapes, [](Text_View) {});
    });
  }
  const auto shape_id = [this](Text_View name) { return Shape_Id(name); };
  Route_References found{{Declared, local.Own, shape_id}, {}, false};
  const auto world = FSO->GetFolder(places::World(MSTS_Path, route_folder))->Files();
  for (const auto& file : world) {
    if (!Is_World_File(file->name())) continue;
    const Text name = places::Below(places::World_Folder, file->name());
    Text text = read(*file);
    try {
      if (!Is_World_Text(text)) text = Text_Of_Binary(text, file->State().Size);
    } catch (const Failure& failure) {
      found.Unread.push_back(Concatenate({name, u", ", failure.Reason()}));
      continue;
    }
    Naming_File(name, [&] { found.Counter.Count_World_File(name, text); });
  }
  found.Counter.Count_Paths(places::Tsection, local.Path_Sections);
  const auto databases = Track_Databases(*FSO, places::Route(MSTS_Path, route_folder));
  found.Has_Database = !databases.empty();
  for (const auto& file : databases) {
    Text text = read(*file);
    Naming_File(file->name(), [&] {
      if (Is_Binary(text)) text = Text_Of_Binary(text, file->State().Size);
      found.Counter.Count_Track_Database(file->name(), text);
    });
  }
  return found;
}

}  // namespace rivelt
