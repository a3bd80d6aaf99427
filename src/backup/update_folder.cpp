#include "backup/update_folder.h"

#include <algorithm>

#include "backup/backup_name.h"
#include "system/ignoring_failures.h"
#include "system/places.h"

namespace rivelt {
namespace {

// Removes a folder that has nothing left in it.
void Remove_If_Empty(File_System_Object& files, const Text& path) {
  if (files.FolderExists(path)) Ignoring_Failures([&] { files.DeleteFolder(path); });
}

}  // namespace

Update_Folder::Update_Folder(File_System_Object& files, Text_View root, Text_View route,
                             Text_View name)
    : Kept(files, places::Below(places::Updates(root, route), name)),
      Route(files, places::Route(root, route)),
      Files(files),
      Quenby(places::Quenby(root)),
      Parent(places::Updates(root, route)) {}

std::optional<Journal> Update_Folder::Read() const {
  const auto file = Kept.Find(Journal_Name);
  if (!file) return std::nullopt;
  return Read_Journal(file->OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll());
}

void Update_Folder::Write(const Journal& journal) {
  const auto stream = Files.CreateTextFile(Kept.Path(Journal_Name), true, true);
  stream->Write(Journal_Text(journal));
  stream->Close();
}

std::unique_ptr<File> Update_Folder::Holder_Of(const Journal_File& file, Text_View place) const {
  return file.Has_Twin ? Route.Find_Exactly(place) : Route.Find(place);
}

std::vector<Update_Folder::Holder> Update_Folder::Holders_Of(const Journal_File& file) const {
  std::vector<Holder> holders;
  for (const Text& place : {file.New_Place, file.Original_Place}) {
    if (place.empty()) continue;
    auto found = Holder_Of(file, place);
    if (!found || (!holders.empty() && holders[0].Held->name() == found->name())) continue;
    const Found kind = Kind_Of(file, *found);
    holders.push_back({std::move(found), kind});
  }
  return holders;
}

Found Update_Folder::Kind_Of(const Journal_File& file, const File& found) const {
  const Content content = Content_Of(found);
  const auto kept = file.Original ? Kept.Find(file.Original_Place) : nullptr;
  const bool is_kept = kept && kept->State().Identity == found.State().Identity;
  const bool is_original = file.Original && (content == *file.Original || is_kept);
  const bool is_new = file.New && content == *file.New;
  if (is_original && is_new) {
    if (file.Original_Place == file.New_Place) return Found::Either;
    return found.name() == Name_In(file.New_Place) ? Found::New : Found::Original;
  }
  if (is_original) return Found::Original;
  if (is_new) return Found::New;
  return Is_Waiting(file) ? Found::Not_Moved : Found::Other;
}

bool Update_Folder::Is_Waiting(const Journal_File& file) const {
  if (!file.New) return false;
  const auto waiting = Placed_Files(Files, Quenby).Find(file.Source);
  return waiting && Content_Of(*waiting) == *file.New;
}

Found Update_Folder::Found_Of(const Journal_File& file) const {
  const std::vector<Holder> holders = Holders_Of(file);
  if (holders.empty()) {
    if (!file.New) return Found::New;
    return file.Original ? Found::Missing : Found::Original;
  }
  // What the update has put there counts for more than what is beside it.
  const auto is_new = [](const Holder& holder) { return holder.Kind == Found::New; };
  return std::ranges::any_of(holders, is_new) ? Found::New : holders[0].Kind;
}

Outcome Update_Folder::Outcome_Of(const Journal& journal) const {
  std::vector<Found> found;
  found.reserve(journal.size());
  for (const Journal_File& file : journal) found.push_back(Found_Of(file));
  return Decide(found, Kept.Find(All_Moved_Name) != nullptr);
}

void Update_Folder::Detach(const Journal_File& file) {
  if (!file.Original) return;
  const auto kept = Kept.Find_Exactly(file.Original_Place);
  const auto in_route = Holder_Of(file, file.Original_Place);
  if (!in_route || (kept && kept->State().Identity != in_route->State().Identity)) return;
  // Killed in between, the file is in the route alone, and this is done again.
  if (kept) kept->Delete(true);
  in_route->Copy(Kept.Path(file.Original_Place));
}

void Update_Folder::Delete_Temporaries() {
  Route.Delete_Temporaries();
  const Text staging = places::Below(Quenby, places::Staging_Name);
  for (const Text& path : {staging, places::Below(staging, places::Databases_Folder)}) {
    Placed_Files staged(Files, path);
    if (staged.Exists()) staged.Delete_Temporaries();
  }
}

void Update_Folder::Complete() {
  Remove_New_Files();
  const Text completed = Lose_Ending();
  Ignoring_Failures([&] { Files.DeleteFile(places::Below(completed, All_Moved_Name), true); });
}

void Update_Folder::Discard(const Journal& journal) {
  // From here on a process that is killed leaves a folder without a journal, which goes as well.
  Delete_If_There(Journal_Name);
  Delete_If_There(All_Moved_Name);
  Files.Flush(Path());
  Remove_New_Files();
  Kept.Delete_Temporaries();
  Discard_Kept(journal);
  for (const Text& place : Kept.Places()) {
    const auto kept = Kept.Find_Exactly(place);
    if (kept && Is_In_Route(place, Content_Of(*kept))) kept->Delete(true);
  }
  Remove_If_Empty(Files, Kept.Path(places::World_Folder));
  Remove_If_Empty(Files, Kept.Path());
  if (Kept.Exists()) Lose_Ending();
  Remove_If_Empty(Files, Parent);
}

void Update_Folder::Discard_Kept(const Journal& journal) {
  for (const Journal_File& file : journal) {
    if (!file.Original) continue;
    const auto kept = Kept.Find_Exactly(file.Original_Place);
    if (!kept) continue;
    const Content content = Content_Of(*kept);
    if (content == *file.Original || Is_In_Route(file.Original_Place, content)) kept->Delete(true);
  }
}

bool Update_Folder::Is_In_Route(Text_View place, const Content& content) const {
  const auto in_route = Route.Find(place);
  return in_route && Content_Of(*in_route) == content;
}

void Update_Folder::Remove_New_Files() {
  const Text path = Kept.Path(New_Files_Name);
  if (!Files.FolderExists(path)) return;
  const auto files = Files.GetFolder(path)->Files();
  for (const auto& file : files) file->Delete(true);
  Files.DeleteFolder(path);
}

void Update_Folder::Delete_If_There(Text_View name) {
  if (const auto file = Kept.Find(name)) file->Delete(true);
}

Text Update_Folder::Lose_Ending() const {
  Text completed = Kept.Path().substr(0, Kept.Path().size() - Unfinished_Ending.size());
  Files.MoveFolder(Kept.Path(), completed);
  Files.Flush(Parent);
  return completed;
}

std::vector<Text> Update_Folders(File_System_Object& files, Text_View root, Text_View route) {
  std::vector<Text> names;
  const Text parent = places::Updates(root, route);
  if (!files.FolderExists(parent)) return names;
  const auto folders = files.GetFolder(parent)->SubFolders();
  for (const auto& folder : folders) {
    if (Is_Backup_Time(Time_In(folder->name()))) names.push_back(folder->name());
  }
  return names;
}

}  // namespace rivelt
