#include "backup/flat_backups.h"

#include <algorithm>

#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/letter_case.h"

namespace rivelt {
namespace {

// Folders of the older form hold files; those of a route's updates hold folders alone.
std::vector<Text> Flat_Folders(File_System_Object& files, Text_View root) {
  std::vector<Text> names;
  if (!files.FolderExists(places::Backups(root))) return names;
  const auto folders = files.GetFolder(places::Backups(root))->SubFolders();
  for (const auto& folder : folders) {
    // A folder that cannot be read is no backup that could be restored.
    Ignoring_Failures([&] {
      if (folder->Files().Count() > 0) names.push_back(folder->name());
    });
  }
  return names;
}

}  // namespace

std::vector<Flat_Backup_Name> Flat_Backups(File_System_Object& files, Text_View root) {
  std::vector<Flat_Backup_Name> backups;
  for (const Text& name : Flat_Folders(files, root)) {
    if (auto backup = Read_Flat_Backup_Name(name)) backups.push_back(*std::move(backup));
  }
  return backups;
}

Text Flat_Backup_Path(Text_View root, const Flat_Backup_Name& name) {
  return places::Below(places::Backups(root), Concatenate({name.Route, u" ", name.Time}));
}

Text Place_In_Route(Text_View flat_name) {
  if (Fold_Case(flat_name) == places::Tsection) return Text(flat_name);
  return places::Below(places::World_Folder, flat_name);
}

Text Newest_Flat_Backup(File_System_Object& files, Text_View root, Text_View route) {
  Text newest;
  for (const Flat_Backup_Name& backup : Flat_Backups(files, root)) {
    if (backup.Route == route) newest = std::max(newest, backup.Time);
  }
  return newest;
}

bool Has_Unfinished_Flat_Backups(File_System_Object& files, Text_View root) {
  return std::ranges::any_of(Flat_Folders(files, root),
                             [](const Text& name) { return name.ends_with(Unfinished_Ending); });
}

std::vector<Text> Keep_Unfinished_Flat_Backups(File_System_Object& files, Text_View root) {
  std::vector<Text> routes;
  for (const Text& name : Flat_Folders(files, root)) {
    if (!name.ends_with(Unfinished_Ending)) continue;
    const Text route = name.substr(0, name.size() - Unfinished_Ending.size());
    Ignoring_Failures([&] {
      const Text time = Backup_Time_After(Newest_Flat_Backup(files, root, route));
      files.MoveFolder(places::Below(places::Backups(root), name),
                       Flat_Backup_Path(root, {route, time}));
    });
    routes.push_back(route);
  }
  return routes;
}

}  // namespace rivelt
