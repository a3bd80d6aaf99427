#include <algorithm>
#include <utility>

#include "platform/linux/files.h"
#include "text/letter_case.h"
#include "text/primitives.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

bool Can_Be_Spelled(Text_View path) {
  return !path.empty() && path.find(u'\0') == Text_View::npos;
}

bool Is_Drive_Letter(char16_t unit) {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

bool Both_Slashes(char16_t first, char16_t second) {
  return first == u'/' && second == u'/';
}

Text_View Last_Name(Text_View rest) {
  return rest.substr(rest.rfind(u'/') + 1);
}

}  // namespace

Linux_Files::Linux_Files(const std::string& wine_prefix)
    : File_Verbs(u'/'), Drives(From_Utf8(wine_prefix + "/dosdevices/")) {}

void Linux_Files::Set_Root(Text_View path) {
  Installation.reset();
  // An empty root is that of the paths that begin with a separator.
  if (path.empty()) path = u"/";
  if (Can_Be_Spelled(path)) Installation = Spell(path);
  Known_Folders.clear();
  File_Verbs::Set_Root(path);
}

bool Linux_Files::Is_Kind(const Text& path, Kind kind) const {
  const auto entry = Look(path);
  return entry && entry->What == kind;
}

std::optional<Text> Linux_Files::First_That_Fits(const Text& folder, Text_View name,
                                                 Kind kind) const {
  if (!Is_Kind(folder, Kind::Folder)) return std::nullopt;
  const Text wanted = Fold_Case(name);
  std::optional<Text> best;
  for (const Name_Key& found : Names(folder, kind)) {
    if (found.Folded == wanted && (!best || found.Name < *best)) best = found.Name;
  }
  return best ? std::optional(Below(folder, *best)) : std::nullopt;
}

std::optional<Text> Linux_Files::Enter(const Text& folder, Text_View name,
                                       bool is_below_root) const {
  const bool is_dots = name == u"." || name == u"..";
  Text spelled = Below(folder, name);
  if ((is_dots || !is_below_root) && Is_Kind(spelled, Kind::Folder)) return spelled;
  return First_That_Fits(folder, name, Kind::Folder);
}

Linux_Files::Spelled_Path Linux_Files::Spell(Text_View path) const {
  Spelled_Path spelled;
  Text rest(path);
  std::ranges::replace(rest, u'\\', u'/');
  if (rest.size() > 1 && rest[1] == u':' && Is_Drive_Letter(rest[0])) {
    const char16_t drive = static_cast<char16_t>(rest[0] | 0x20);
    spelled.Start = Concatenate({Drives, Text_View(&drive, 1), u":/"});
    rest.erase(0, 2);
  } else if (rest[0] == u'/') {
    spelled.Start = u"/";
  }
  rest.erase(std::unique(rest.begin(), rest.end(), Both_Slashes), rest.end());
  if (rest.ends_with(u'/')) rest.pop_back();
  spelled.Rest = rest.starts_with(u'/') ? rest.substr(1) : std::move(rest);
  return spelled;
}

std::size_t Linux_Files::Length_Of_Root(const Spelled_Path& spelled) const {
  if (!Installation || spelled.Start != Installation->Start) return Text::npos;
  const std::size_t length = Installation->Rest.size();
  if (length == 0) return 0;
  const bool is_below = spelled.Rest.size() > length && spelled.Rest[length] == u'/' &&
                        spelled.Rest.starts_with(Installation->Rest);
  return is_below ? length : Text::npos;
}

std::optional<Text> Linux_Files::Find_Folder(const Spelled_Path& spelled) {
  const std::size_t root = Length_Of_Root(spelled);
  const Text whole = spelled.Start + spelled.Rest;
  if (const auto known = Known_Folders.find(whole);
      known != Known_Folders.end() && Is_Kind(known->second, Kind::Folder))
    return known->second;
  std::optional<Text> folder = spelled.Start;
  for (std::size_t begin = 0; folder && begin < spelled.Rest.size();) {
    const std::size_t end = std::min(spelled.Rest.find(u'/', begin), spelled.Rest.size());
    const Text_View name = Text_View(spelled.Rest).substr(begin, end - begin);
    folder = Enter(*folder, name, begin >= root);
    begin = end + 1;
  }
  if (folder && root != Text::npos) Known_Folders[whole] = *folder;
  return folder;
}

std::optional<Text> Linux_Files::Folder_Around(Spelled_Path spelled) {
  if (spelled.Rest.empty()) return std::nullopt;
  spelled.Rest.resize(spelled.Rest.size() - Last_Name(spelled.Rest).size());
  if (!spelled.Rest.empty()) spelled.Rest.pop_back();
  return Find_Folder(spelled);
}

std::optional<Text> Linux_Files::Find(Text_View path, Kind kind) {
  if (!Can_Be_Spelled(path)) return std::nullopt;
  const Spelled_Path spelled = Spell(path);
  if (kind == Kind::Folder) {
    auto folder = Find_Folder(spelled);
    return folder && Is_Kind(*folder, kind) ? folder : std::nullopt;
  }
  const auto folder = Folder_Around(spelled);
  if (!folder) return std::nullopt;
  const Text_View name = Last_Name(spelled.Rest);
  Text file = Below(*folder, name);
  return Is_Kind(file, kind) ? std::optional(std::move(file))
                             : First_That_Fits(*folder, name, kind);
}

Text Linux_Files::Place(Text_View path) {
  const Spelled_Path spelled = Can_Be_Spelled(path) ? Spell(path) : Spelled_Path();
  const auto folder = Folder_Around(spelled);
  if (!folder) throw Failure(Concatenate({u"no folder for ", path}));
  return Below(*folder, Last_Name(spelled.Rest));
}

}  // namespace rivelt
