#include "backup/update_folder.h"

#include <algorithm>

#include "backup/backup_time.h"
#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/primitives.h"

namespace rivelt {

Outcome Decide(const std::vector<Finding>& files) {
  const auto has_moved = [](const Finding& file) {
    return !file.Waits && (file.Is_New() || file.Has_Come());
  };
  const auto has = [&](Found found) {
    return std::ranges::any_of(files, [&](const Finding& file) { return file.What == found; });
  };
  if (std::ranges::all_of(files, has_moved)) return Outcome::Finished;
  if (has(Found::New) || has(Found::Gone)) return Outcome::Rolled_Back;
  if (std::ranges::none_of(files, &Finding::Has_Come)) return Outcome::Untouched;
  return has(Found::Original) ? Outcome::Rolled_Back : Outcome::Left;
}

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

void Update_Folder::Walk(const std::function<void(const Text&, File&)>& take) const {
  Walk_Files(*Files.GetFolder(Path()), u"", [&](const Text& place, File& file) {
    if (place != Journal_Name) take(place, file);
  });
}

// Whether it is a file of ours in the making, or the route has it byte for byte.
bool Update_Folder::Can_Go(Text_View place, const File& file) {
  if (place.starts_with(Temporary_Prefix) || Name_In(place).starts_with(Temporary_Prefix)) {
    return true;
  }
  const File* in_route = Route.Find(place);
  return in_route && Has_Content(*in_route, Content_Of(file));
}

bool Update_Folder::Is_All_In_Route() {
  bool is_all = true;
  Walk([&](const Text& place, File& file) { is_all = is_all && Can_Go(place, file); });
  return is_all;
}

void Update_Folder::Finish() {
  const Text made = Kept.Path(New_Files_Name);
  // What another program holds open stays in the backup, where it means nothing.
  Ignoring_Failures([&] {
    const auto files = Files.GetFolder(made)->Files();
    for (const auto& file : files) file->Delete(true);
    Files.DeleteFolder(made);
  });
  Lose_Ending();
}

void Update_Folder::Remove() {
  if (const auto journal = Files.FindFile(Kept.Path(Journal_Name))) {
    journal->Delete(true);
    Files.Flush(Path());
  }
  Route.Forget_All();
  Walk([&](const Text& place, File& file) {
    if (Can_Go(place, file)) file.Delete(true);
  });
  Remove_Empty(Path());
  if (Files.FolderExists(Path())) return Lose_Ending();
  Ignoring_Failures([&] { Files.DeleteFolder(Parent); });
}

// The folder and all below it, as far as no file is in them.
void Update_Folder::Remove_Empty(const Text& path) {
  const auto folders = Files.GetFolder(path)->SubFolders();
  for (const auto& folder : folders) Remove_Empty(places::Below(path, folder->name()));
  Ignoring_Failures([&] { Files.DeleteFolder(path); });
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
