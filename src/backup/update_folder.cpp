#include "backup/update_folder.h"

#include <algorithm>

#include "backup/backup_time.h"
#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/primitives.h"

namespace rivelt {

Update_Folder::Update_Folder(const Updated_Route& route, Text_View name)
    : Kept(route.Files, places::Below(places::Updates(route.Root, route.Folder), name)),
      Route(route.Files, places::Route(route.Root, route.Folder)),
      Waiting(route.Files, places::Quenby(route.Root)),
      Files(route.Files),
      Parent(places::Updates(route.Root, route.Folder)) {}

bool Update_Folder::Has_Journal() const {
  return Files.FindFile(Kept.Path(Journal_Name)) != nullptr;
}

std::optional<Journal> Update_Folder::Read() const {
  const auto file = Files.FindFile(Kept.Path(Journal_Name));
  if (!file) return std::nullopt;
  return Read_Journal(file->OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll());
}

void Update_Folder::Write(const Journal& journal, Text_View name) {
  const auto stream = Files.CreateTextFile(Kept.Path(name), true, true);
  stream->Write(Journal_Text(journal));
  stream->Close();
}

Finding Update_Folder::Look(const Journal_File& file) {
  File* waiting = file.New ? Waiting.Find(file.Source) : nullptr;
  Finding finding{.What = Found::Other, .Waits = waiting && Has_Content(*waiting, *file.New)};
  File* found = Route.Find(file.Place);
  if (!found) {
    finding.What = !file.New ? Found::New : file.Original ? Found::Gone : Found::Original;
    return finding;
  }
  const Content content = Content_Of(*found);
  const bool is_new = content == file.New;
  File* kept = file.Original ? Kept.Find(file.Place) : nullptr;
  const bool is_kept = kept && kept->State().Identity == found->State().Identity;
  if (content == file.Original || is_kept) {
    finding.What = Found::Original;
    finding.Is_Both = is_new;
  } else if (is_new) {
    finding.What = Found::New;
  }
  return finding;
}

Outcome Update_Folder::Look(const Journal& journal) {
  std::vector<Finding> found;
  found.reserve(journal.Files.size());
  for (const Journal_File& file : journal.Files) found.push_back(Look(file));
  return Decide(found);
}

File& Update_Folder::Original_Of(const Journal_File& file) {
  File* kept = Kept.Find(file.Place);
  if (kept && Has_Content(*kept, *file.Original)) return *kept;
  throw Failure(Concatenate(
      {kept ? u"Somebody has changed a kept original: " : u"A kept original is missing: ",
       Kept.Path(file.Place)}));
}

void Update_Folder::Each_Kept(const Take_Placed_File& take) const {
  Placed_Files kept(Files, Path());
  kept.Each_In(u"", [&](const Text& place, File& file) {
    if (place != Journal_Name) take(place, file);
  });
  const auto folders = Files.GetFolder(Path())->SubFolders();
  for (const auto& folder : folders) {
    const Text name = folder->name();
    if (name != Changed_Since_Name && name != New_Files_Name) kept.Each_In(name + u"\\", take);
  }
}

void Update_Folder::Each_Backup(const Take_Placed_File& take) const {
  Each_Kept(take);
  const Text aside = Kept.Path(Changed_Since_Name);
  if (!Files.FolderExists(aside)) return;
  Placed_Files changed(Files, aside);
  changed.Each_In(u"", take);
  const auto folders = Files.GetFolder(aside)->SubFolders();
  for (const auto& folder : folders) changed.Each_In(folder->name() + u"\\", take);
}

bool Update_Folder::Can_Go(Text_View place, const File& kept) {
  const File* in_route = Route.Find(place);
  return Name_In(place).starts_with(Temporary_Prefix) ||
         (in_route && Has_Content(*in_route, Content_Of(kept)));
}

bool Update_Folder::Is_All_In_Route() {
  bool is_all = true;
  Each_Kept([&](const Text& place, File& kept) { is_all = is_all && Can_Go(place, kept); });
  return is_all;
}

void Update_Folder::Finish() {
  Remove_New_Files();
  Lose_Ending();
}

void Update_Folder::Remove() {
  if (const auto journal = Files.FindFile(Kept.Path(Journal_Name))) {
    journal->Delete(true);
    Files.Flush(Path());
  }
  Remove_New_Files();
  Route.Forget_All();
  Each_Kept([&](const Text& place, File& kept) {
    if (Can_Go(place, kept)) kept.Delete(true);
  });
  const auto folders = Files.GetFolder(Path())->SubFolders();
  const auto remove_if_empty = [&](const Text& path) {
    Ignoring_Failures([&] { Files.DeleteFolder(path); });
  };
  for (const auto& folder : folders) remove_if_empty(Kept.Path(folder->name()));
  remove_if_empty(Path());
  if (Files.FolderExists(Path())) return Lose_Ending();
  remove_if_empty(Parent);
}

void Update_Folder::Remove_New_Files() {
  const Text path = Kept.Path(New_Files_Name);
  if (!Files.FolderExists(path)) return;
  const auto files = Files.GetFolder(path)->Files();
  for (const auto& file : files) file->Delete(true);
  Files.DeleteFolder(path);
}

void Update_Folder::Lose_Ending() {
  Files.MoveFolder(Path(), places::Below(Parent, Time_In(Name_In(Path()))));
  // The name is as good as on disk: should it come back, the next start does this again.
  Ignoring_Failures([&] { Files.Flush(Parent); });
}

std::vector<Text> Update_Folders(const Updated_Route& route) {
  std::vector<Text> names;
  const Text parent = places::Updates(route.Root, route.Folder);
  if (!route.Files.FolderExists(parent)) return names;
  const auto folders = route.Files.GetFolder(parent)->SubFolders();
  for (const auto& folder : folders) {
    if (Is_Backup_Time(Time_In(folder->name()))) names.push_back(folder->name());
  }
  return names;
}

std::vector<Text> Unfinished_Updates(const Updated_Route& route) {
  std::vector<Text> names = Update_Folders(route);
  std::erase_if(names, [](const Text& name) { return !name.ends_with(Unfinished_Ending); });
  return names;
}

}  // namespace rivelt
