#include <algorithm>
#include <utility>

#include "backup/backup_name.h"
#include "backup/backups.h"
#include "backup/flat_backups.h"
#include "backup/update_folder.h"
#include "system/places.h"
#include "text/letter_case.h"

namespace rivelt {
namespace {

void Count(Backup& backup, const Placed_Files& files) {
  if (!files.Exists()) return;
  for (const Text& place : files.Places()) {
    if (place == Journal_Name || place == All_Moved_Name) continue;
    const auto file = files.Find_Exactly(place);
    if (!file) continue;  // another program has just moved it
    ++backup.Files;
    backup.Bytes += file->State().Size;
  }
}

Backup Backup_In(File_System_Object& files, Text_View root, Text_View route, const Text& name) {
  const Update_Folder folder(files, root, route, name);
  Backup backup;
  backup.Route = route;
  backup.Time = Time_In(name);
  Count(backup, folder.Kept);
  Count(backup, Placed_Files(files, folder.Kept.Path(Changed_Since_Name)));
  const auto journal = folder.Read();
  if (name.ends_with(Unfinished_Ending)) {
    backup.Kind = Backup::State::Unfinished;
  } else if (!journal) {
    backup.Kind = Backup::State::Set_Aside;
  }
  for (const Journal_File& file : journal.value_or(Journal())) {
    if (file.Changed_Since_Check) backup.Changed.push_back(file.Original_Place);
  }
  return backup;
}

}  // namespace

std::vector<Backup> List_Backups(File_System_Object& files, Text_View root) {
  std::vector<Backup> backups;
  for (const Flat_Backup_Name& name : Flat_Backups(files, root)) {
    Backup& backup = backups.emplace_back();
    backup.Route = name.Route;
    backup.Time = name.Time;
    Count(backup, Placed_Files(files, Flat_Backup_Path(root, name)));
  }
  if (!files.FolderExists(places::Backups(root))) return backups;
  const auto routes = files.GetFolder(places::Backups(root))->SubFolders();
  for (const auto& route : routes) {
    for (const Text& name : Update_Folders(files, root, route->name())) {
      backups.push_back(Backup_In(files, root, route->name(), name));
    }
  }
  std::ranges::stable_sort(backups, {}, [](const Backup& backup) {
    return std::pair(Key_Of(backup.Route), backup.Time);
  });
  return backups;
}

}  // namespace rivelt
