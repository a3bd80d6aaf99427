#include "convert/route_references.h"

#include <memory>
#include <utility>

#include "catalogue/catalogue_text.h"
#include "convert/whole_route.h"
#include "convert/world_passes.h"
#include "routes/trk_file.h"
#include "system/places.h"
#include "text/keyed_collection.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

// Does the step, which reads the file or folder of that name.
template <class Step>
auto Reading(Text_View name, const Step& step) try {
  return step();
} catch (const std::exception&) {
  throw Unreadable_File(Text(name));
}

// The ids of the catalogue's shapes by their names. Of a name that comes twice the first id counts.
std::function<Long(Text_View)> Shape_Ids_In(Text_View rest) {
  auto ids = std::make_shared<Keyed_Collection<Long>>();
  Read_Shapes(rest, [&](Long id, Text_View name) {
    if (ids->Find(name) == nullptr) ids->Add(id, name);
  });
  return [ids](Text_View name) {
    const Long* id = ids->Find(name);
    return id == nullptr ? -1 : *id;
  };
}

}  // namespace

Route_References::Route_References(File_System_Object& files, Text root, Text route,
                                   std::function<void()> before_file)
    : Files(files),
      Root(std::move(root)),
      Route(std::move(route)),
      Before_File(std::move(before_file)),
      Global(Read_Catalogue()),
      Local(Read_Local()),
      Counter(Global.Numbers, Local.Own, Global.Shape_Id) {}

Route_References::Installed_Catalogue Route_References::Read_Catalogue() {
  return Reading(u"global\\tsection.dat", [&] {
    const Text text = Read(*Files.GetFile(places::Catalogue(Root)));
    const Text stripped = Without_Comments(Trim_Text(text));
    Text_View rest = stripped;
    Installed_Catalogue catalogue;
    catalogue.Numbers = Read_Catalogue_Numbers(text);
    catalogue.Reserved_Sections = Read_Count(rest, u"TrackSections");
    catalogue.Reserved_Shapes = Read_Count(rest, u"TrackShapes");
    catalogue.Shape_Id = Shape_Ids_In(rest);
    return catalogue;
  });
}

Rebased_Tsection Route_References::Read_Local() {
  return Reading(places::Tsection, [&]() -> Rebased_Tsection {
    const Text path = places::Local_Catalogue(Root, Route);
    if (!Files.FindFile(path)) return {};
    return Rebase_Tsection(Read(*Files.GetFile(path)), Global.Reserved_Sections,
                           Global.Reserved_Shapes, [](Text_View) {});
  });
}

void Route_References::Count_Paths() {
  Counter.Count_Paths(places::Tsection, Local.Path_Sections);
}

void Route_References::Count_World() {
  Read_World([&](Text_View name, Text_View text) { Counter.Count_World_File(name, text); });
}

void Route_References::Count_Databases() {
  Read_Databases([&](Text_View name, Text_View text) { Counter.Count_Track_Database(name, text); });
}

Left_Behind Route_References::Count_Left_Behind() {
  Left_Behind left;
  if (!Local.Moves()) return left;
  const Own_Numbers moving = Local.Moving();
  Read_Databases(
      [&](Text_View, Text_View text) { left.In_Databases += Count_Own_Numbers(text, moving); });
  if (Local.Shape_Delta == 0) return left;
  Read_World([&](Text_View, Text_View text) {
    left.In_Track_Objects += Count_Own_Shapes(text, moving, Global.Shape_Id);
  });
  return left;
}

void Route_References::Read_World(const Take& take) {
  const auto files = Reading(places::World_Folder,
                             [&] { return Files.GetFolder(places::World(Root, Route))->Files(); });
  for (const auto& file : files) {
    if (!Is_World_File(file->name())) continue;
    const Text name = places::Below(places::World_Folder, file->name());
    Reading(name, [&] {
      const Text text = Read(*file);
      if (Is_World_Text(text)) {
        take(name, text);
      } else {
        Binary.push_back(name);
      }
    });
  }
}

void Route_References::Read_Databases(const Take& take) {
  const auto names = Reading(
      u".trk", [&] { return Database_Names(*Files.GetFolder(places::Route(Root, Route))); });
  for (const Text& name : names) {
    Reading(name, [&] {
      const auto file = Files.FindFile(places::Below(places::Route(Root, Route), name));
      if (file) take(name, Read(*file));
    });
  }
}

Text Route_References::Read(File& file) {
  Before_File();
  return file.OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
}

}  // namespace rivelt
