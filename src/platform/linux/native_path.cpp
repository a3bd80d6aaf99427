#include "platform/linux/native_path.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/linux/walk_folder.h"
#include "text/letter_case.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

// False if there is no such thing. Failure: the system does not say.
bool Look_Up(Native_Paths::Found& found) {
  if (stat(found.Path.c_str(), &found.State) == 0) return true;
  if (errno != ENOENT && errno != ENOTDIR && errno != ENAMETOOLONG) throw Failure();
  return false;
}

bool Is_Folder(const std::string& path) {
  Native_Paths::Found found{path.empty() ? "." : path};
  return Look_Up(found) && found.Is_Folder();
}

bool Can_Be_Spelled(Text_View path) {
  return !path.empty() && path.find(u'\0') == Text_View::npos;
}

bool Is_Drive_Letter(char unit) {
  return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z');
}

// The path of the entry that differs in letter case, empty if there is none.
std::string Differing_In_Case(const std::string& folder, std::string_view component) {
  const Text wanted = Fold_Case(From_Utf8(component));
  std::string best;
  Text best_name;
  For_Each_Entry(folder, [&](const char* name, unsigned char) {
    Text wide = From_Utf8(name);
    if (wide.size() != wanted.size() || Fold_Case(wide) != wanted) return;
    if (!best.empty() && best_name < wide) return;
    // A link that leads nowhere is part of no walk.
    Native_Paths::Found found{Below(folder, name)};
    if (!Look_Up(found)) return;
    best = std::move(found.Path);
    best_name = std::move(wide);
  });
  return best;
}

}  // namespace

Native_Paths::Spelled_Path Native_Paths::Spell(Text_View path) const {
  if (!Can_Be_Spelled(path)) throw Failure();
  std::string bytes = To_Utf8(path);
  std::replace(bytes.begin(), bytes.end(), '\\', '/');
  Spelled_Path spelled;
  if (bytes.size() > 1 && bytes[1] == ':' && Is_Drive_Letter(bytes[0])) {
    spelled.Start = Drives;
    spelled.Start.append(1, static_cast<char>(bytes[0] | 0x20)).append(":/");
    bytes.erase(0, 2);
  } else if (bytes[0] == '/') {
    spelled.Start = '/';
  }
  const std::size_t first = bytes.find_first_not_of('/');
  if (first != std::string::npos)
    spelled.Rest = bytes.substr(first, bytes.find_last_not_of('/') - first + 1);
  return spelled;
}

std::optional<Native_Paths::Found> Native_Paths::Find(const Spelled_Path& spelled) {
  Found found{spelled.Start + spelled.Rest};
  if (Look_Up(found)) return found;
  found.Path = spelled.Start;
  for (std::string_view rest = spelled.Rest; !rest.empty();) {
    const std::string_view component = rest.substr(0, rest.find('/'));
    rest.remove_prefix(std::min(rest.size(), component.size() + 1));
    if (component.empty()) continue;
    const std::string folder = found.Path;
    found.Path = Below(folder, component);
    if (Look_Up(found)) continue;
    if (!Is_Folder(folder)) return std::nullopt;
    found.Path = Differing_In_Case(folder, component);
    if (found.Path.empty()) return std::nullopt;
  }
  if (!Look_Up(found)) return std::nullopt;
  return found;
}

std::optional<Native_Paths::Found> Native_Paths::Look_For(Text_View path) const {
  if (!Can_Be_Spelled(path)) return std::nullopt;
  return Find(Spell(path));
}

Native_Paths::Found Native_Paths::Existing(Text_View path) const {
  std::optional<Found> found = Look_For(path);
  if (!found) throw Failure();
  return *std::move(found);
}

std::string Native_Paths::To_Be_Made(Text_View path) const {
  Spelled_Path spelled = Spell(path);
  if (spelled.Rest.empty()) throw Failure();
  std::string name(Name_Of(spelled.Rest));
  spelled.Rest.resize(spelled.Rest.size() - name.size());
  if (spelled.Start.empty() && spelled.Rest.empty()) return name;
  const std::optional<Found> folder = Find(spelled);
  if (!folder) throw Failure();
  return Below(folder->Path, name);
}

std::string_view Name_Of(std::string_view native_path) {
  return native_path.substr(native_path.rfind('/') + 1);
}

std::string Folder_Of(const std::string& native_path) {
  const std::size_t slash = native_path.rfind('/');
  return slash == std::string::npos ? "." : native_path.substr(0, slash + 1);
}

}  // namespace rivelt
