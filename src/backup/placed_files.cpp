#include "backup/placed_files.h"

#include <iterator>
#include <utility>

#include "system/places.h"

namespace rivelt {

Text_View Name_In(Text_View place) {
  return place.substr(place.rfind(u'\\') + 1);
}

Text_View Folder_In(Text_View place) {
  return place.substr(0, place.size() - Name_In(place).size());
}

void Walk_Files(const Folder& folder, const Text& start,
                const std::function<void(const Text& place, File& file)>& take) {
  const auto files = folder.Files();
  for (const auto& file : files) take(start + file->name(), *file);
  const auto folders = folder.SubFolders();
  for (const auto& inner : folders) Walk_Files(*inner, start + inner->name() + u"\\", take);
}

Text Placed_Files::Path(Text_View place) const {
  return places::Below(Folder, place);
}

Placed_Files::Known_Folder& Placed_Files::Folder_Of(Text_View place) {
  const Text_View folder = Folder_In(place);
  const Text folded = Fold_Case(folder);
  const auto before = Known.find(folded);
  if (before != Known.end()) return before->second;
  Known_Folder known{Text(folder), {}};
  if (Files.FolderExists(Path(folder))) {
    const auto found = Files.GetFolder(Path(folder));
    if (!folder.empty()) known.Spelled = found->name() + u"\\";
    for (auto& file : found->Files().Take()) {
      const Name_Key key = Key_Of(file->name());
      known.Files.emplace(key, std::move(file));
    }
  }
  return Known.emplace(folded, std::move(known)).first->second;
}

Placed_Files::Names::iterator Placed_Files::Fitting(Names& names, Text_View place) const {
  const Name_Key key = Key_Of(Name_In(place));
  const auto as_spelled = names.find(key);
  if (as_spelled != names.end()) return as_spelled;
  const auto first = names.lower_bound({key.Folded, {}});
  return first != names.end() && first->first.Folded == key.Folded ? first : names.end();
}

File* Placed_Files::Find(Text_View place) {
  Names& names = Folder_Of(place).Files;
  const auto found = Fitting(names, place);
  return found == names.end() ? nullptr : found->second.get();
}

Text Placed_Files::Spelled(Text_View place) {
  Known_Folder& folder = Folder_Of(place);
  const auto found = Fitting(folder.Files, place);
  return folder.Spelled + (found == folder.Files.end() ? Text(Name_In(place)) : found->first.Name);
}

bool Placed_Files::Has_Twin(Text_View place) {
  Names& names = Folder_Of(place).Files;
  const Text folded = Fold_Case(Name_In(place));
  const auto first = names.lower_bound({folded, {}});
  if (first == names.end() || std::next(first) == names.end()) return false;
  return std::next(first)->first.Folded == folded;
}

void Placed_Files::Add(Text_View place) {
  Folder_Of(place).Files[Key_Of(Name_In(place))] = Files.GetFile(Path(place));
}

void Placed_Files::Forget(Text_View place) {
  Names& names = Folder_Of(place).Files;
  names.erase(Fitting(names, place));
}

void Placed_Files::Make_Folder_Of(Text_View place) {
  Folder_Of(place);
  if (!Files.FolderExists(Path(Folder_In(place)))) Files.CreateFolder(Path(Folder_In(place)));
}

void Placed_Files::Flush() const {
  for (const auto& [folder, names] : Known) {
    if (Files.FolderExists(Path(folder))) Files.Flush(Path(folder));
  }
}

}  // namespace rivelt
