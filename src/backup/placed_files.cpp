#include "backup/placed_files.h"

#include <utility>

#include "system/places.h"
#include "text/letter_case.h"

namespace rivelt {

Text_View Name_In(Text_View place) {
  return place.substr(place.rfind(u'\\') + 1);
}

Text_View Folder_In(Text_View place) {
  return place.substr(0, place.size() - Name_In(place).size());
}

Text Placed_Files::Path(Text_View place) const {
  return places::Below(Folder_Path, place);
}

std::unique_ptr<File> Placed_Files::Find(Text_View place) const {
  return Files.FindFile(Path(place));
}

std::unique_ptr<File> Placed_Files::Find_Exactly(Text_View place) const {
  auto file = Find(place);
  return file && file->name() == Name_In(place) ? std::move(file) : nullptr;
}

Text Placed_Files::Own_Spelling(Text_View place) const {
  Text_View folder = Folder_In(place);
  if (folder.empty()) return Text(place);
  folder.remove_suffix(1);
  // Asked for each file of the same folder.
  if (folder != Last_Asked) {
    Last_Asked = folder;
    const bool exists = Files.FolderExists(Path(folder));
    Last_Spelling = exists ? Files.GetFolder(Path(folder))->name() : Text(folder);
  }
  return places::Below(Last_Spelling, Name_In(place));
}

void Placed_Files::Make_Folder_Of(Text_View place) {
  if (!Exists()) Files.CreateFolder(Folder_Path);
  Text_View folder = Folder_In(place);
  if (folder.empty()) return;
  folder.remove_suffix(1);
  if (!Files.FolderExists(Path(folder))) Files.CreateFolder(Path(folder));
}

bool Placed_Files::Has_World() const {
  return Files.FolderExists(Path(places::World_Folder));
}

std::vector<Text> Placed_Files::Places() const {
  std::vector<Text> found;
  const auto add = [&](const Folder& folder, const Text& start) {
    const auto files = folder.Files();
    for (const auto& file : files) found.push_back(start + file->name());
  };
  add(*Files.GetFolder(Folder_Path), u"");
  if (!Has_World()) return found;
  const auto world = Files.GetFolder(Path(places::World_Folder));
  add(*world, world->name() + u"\\");
  return found;
}

std::set<Text> Placed_Files::Twins() const {
  std::set<Text> seen;
  std::set<Text> twins;
  for (const Text& place : Places()) {
    Text folded = Fold_Case(place);
    if (!seen.insert(folded).second) twins.insert(std::move(folded));
  }
  return twins;
}

void Placed_Files::Flush() const {
  if (Has_World()) Files.Flush(Path(places::World_Folder));
  Files.Flush(Folder_Path);
}

void Placed_Files::Delete_Temporaries() {
  for (const Text& place : Places()) {
    if (Name_In(place).starts_with(Temporary_Prefix)) Files.DeleteFile(Path(place), true);
  }
}

}  // namespace rivelt
