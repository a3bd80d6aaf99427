#include "backup/backups.h"

#include <exception>
#include <set>

#include "app/ignoring_failures.h"
#include "backup/backup_name.h"
#include "text/letter_case.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

std::set<Text> Names_Of(const Collection<File>& files) {
  std::set<Text> names;
  for (const auto& file : files) names.insert(file->name());
  return names;
}

bool Is_Temporary(const File& file) {
  return file.name().starts_with(Temporary_Prefix);
}

}  // namespace

bool Is_Local_File(Text_View name) {
  return Fold_Case(name) == Local_File;
}

Text Route_File_Path(Text_View root, Text_View route_folder, bool is_tsection, Text_View name) {
  return Concatenate({root, u"\\Routes\\", route_folder, is_tsection ? u"\\" : u"\\World\\", name});
}

void Backups::Keep_Originals(Text_View route_folder, const Collection<File>& new_files,
                             Text_View new_files_folder) {
  const Text unfinished = Unfinished_Folder(route_folder);
  std::vector<Text> kept;
  try {
    for (const Text& folder : {Root + u"\\Quenby", Parent_Folder(), unfinished})
      Make_Folder(folder);
    // Read once: to ask for a name that is not there yet may mean to read the whole folder.
    const std::set<Text> kept_before = Names_Of(Files.GetFolder(unfinished)->Files());
    std::set<Text> replaced;
    for (const auto& new_file : new_files) {
      const Text path = Original_Path(route_folder, new_file->name());
      if (!Files.FileExists(path)) continue;
      const auto original = Files.GetFile(path);
      // The second of two new files would replace the first.
      if (!replaced.insert(original->name()).second) throw Failure();
      if (kept_before.contains(original->name())) continue;
      const Text kept_path = Concatenate({unfinished, u"\\", original->name()});
      original->Keep(kept_path);
      kept.push_back(kept_path);
      if (original->name() == new_file->name() || Is_Local_File(new_file->name())) continue;
      kept.push_back(Concatenate({unfinished, u"\\", Temporary_Prefix, new_file->name()}));
      Files.CreateTextFile(kept.back(), true, true)->Close();
    }
    for (const Text& folder : {unfinished, Parent_Folder(), Text(new_files_folder)}) {
      Files.Flush(folder);
    }
  } catch (const std::exception&) {
    for (const Text& path : kept) Ignoring_Failures([&] { Files.DeleteFile(path, true); });
    // Only if it is empty: an earlier Update may have left originals in it.
    Ignoring_Failures([&] { Files.DeleteFolder(unfinished); });
    throw;
  }
}

void Backups::Complete(Text_View route_folder) {
  Flush_Route(route_folder);
  Delete_Temporaries(Unfinished_Folder(route_folder));
  Text target;
  int second = 0;
  do {
    target = Completed_Folder(route_folder, Backup_Time(second++));
  } while (Files.FolderExists(target));
  Files.MoveFolder(Unfinished_Folder(route_folder), target);
  Files.Flush(Parent_Folder());
}

std::vector<Text> Backups::Unfinished() const {
  std::vector<Text> route_folders;
  if (!Files.FolderExists(Parent_Folder())) return route_folders;
  const auto folders = Files.GetFolder(Parent_Folder())->SubFolders();
  for (const auto& folder : folders) {
    const Text name = folder->name();
    if (!name.ends_with(Unfinished_Ending)) continue;
    route_folders.push_back(name.substr(0, name.size() - Unfinished_Ending.size()));
  }
  return route_folders;
}

void Backups::Take_Back(Text_View route_folder) {
  const Text unfinished = Unfinished_Folder(route_folder);
  const auto originals = Files.GetFolder(unfinished)->Files();
  for (const auto& original : originals) {
    if (Is_Temporary(*original)) {
      Remove_New_One(route_folder, original->name().substr(Temporary_Prefix.size()));
    } else {
      Put_Back(route_folder, *original);
    }
  }
  Delete_Temporaries(Concatenate({Root, u"\\Routes\\", route_folder}));
  Delete_Temporaries(Concatenate({Root, u"\\Routes\\", route_folder, u"\\World"}));
  // Until they are safe in the route, the originals stay here as well.
  Flush_Route(route_folder);
  for (const auto& original : originals) original->Delete(true);
  Files.DeleteFolder(unfinished);
}

// What an Update has put in the place of a world file that differs in letter case alone.
void Backups::Remove_New_One(Text_View route_folder, Text_View name) {
  const Text path = Route_File_Path(Root, route_folder, false, name);
  if (!Files.FileExists(path)) return;
  const auto found = Files.GetFile(path);
  if (found->name() == name) found->Delete(true);
}

void Backups::Put_Back(Text_View route_folder, File& original) {
  const Text name = original.name();
  const Text path = Original_Path(route_folder, name);
  if (Files.FileExists(path)) {
    const auto found = Files.GetFile(path);
    // What differs from the original in letter case is another file, unless an Update has put it
    // there.
    const bool is_new_one = Is_Local_File(name) && found->name() == Local_File;
    if (found->name() == name || is_new_one) found->Delete(true);
  }
  original.Keep(path);
}

void Backups::Delete_Temporaries(const Text& folder) {
  if (!Files.FolderExists(folder)) return;
  const auto files = Files.GetFolder(folder)->Files();
  for (const auto& file : files) {
    if (Is_Temporary(*file)) file->Delete(true);
  }
}

bool Backups::Is_Unfinished(Text_View route_folder) const {
  return Files.FolderExists(Unfinished_Folder(route_folder));
}

std::vector<Backup> Backups::List() const {
  std::vector<Backup> backups;
  if (!Files.FolderExists(Parent_Folder())) return backups;
  const auto folders = Files.GetFolder(Parent_Folder())->SubFolders();
  for (const auto& folder : folders) {
    const auto name = Read_Backup_Name(folder->name());
    if (!name) continue;
    const auto files = folder->Files();
    Backup backup{name->Route_Folder, name->Time, files.Count(), 0};
    for (const auto& file : files) backup.Bytes += file->State().Size;
    backups.push_back(backup);
  }
  return backups;
}

void Backups::Restore(const Backup& backup) {
  const Text folder = Completed_Folder(backup.Route_Folder, backup.Time);
  const auto files = Files.GetFolder(folder)->Files();
  Keep_Originals(backup.Route_Folder, files, folder);
  std::vector<File*> without_counterpart;
  for (const auto& file : files) {
    const Text path = Original_Path(backup.Route_Folder, file->name());
    if (Files.FileExists(path)) {
      Files.DeleteFile(path, true);
      file->Copy(path);
    } else {
      without_counterpart.push_back(file.get());
    }
  }
  Complete(backup.Route_Folder);
  // These come last, because taking back would leave them in the route.
  for (File* file : without_counterpart) {
    file->Copy(Original_Path(backup.Route_Folder, file->name()));
  }
  Flush_Route(backup.Route_Folder);
}

Text Backups::Unfinished_Folder(Text_View route_folder) const {
  return Concatenate({Parent_Folder(), u"\\", route_folder, Unfinished_Ending});
}

Text Backups::Completed_Folder(Text_View route_folder, Text_View time) const {
  return Concatenate({Parent_Folder(), u"\\", route_folder, u" ", time});
}

// The route's own tsection.dat is kept in its own letter case.
Text Backups::Original_Path(Text_View route_folder, Text_View name) const {
  return Route_File_Path(Root, route_folder, Is_Local_File(name), name);
}

void Backups::Make_Folder(const Text& path) {
  if (!Files.FolderExists(path)) Files.CreateFolder(path);
}

void Backups::Flush_Route(Text_View route_folder) {
  const Text route = Concatenate({Root, u"\\Routes\\", route_folder});
  Files.Flush(route);
  if (Files.FolderExists(route + u"\\World")) Files.Flush(route + u"\\World");
}

}  // namespace rivelt
