#include "platform/linux/paths.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/linux/walk_folder.h"
#include "text/letter_case.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

// Failure: the system does not say.
bool Is_Kind(const std::string& path, mode_t kind) {
  struct stat state {};
  if (stat(path.empty() ? "." : path.c_str(), &state) == 0) return (state.st_mode & S_IFMT) == kind;
  if (errno != ENOENT && errno != ENOTDIR && errno != ENAMETOOLONG) throw Failure();
  return false;
}

bool Can_Be_Spelled(Text_View path) {
  return !path.empty() && path.find(u'\0') == Text_View::npos;
}

bool Is_Drive_Letter(char unit) {
  return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z');
}

// The path of the first entry of that kind in the order of a walk, empty if there is none.
std::string First_That_Fits(const std::string& folder, std::string_view component, mode_t kind) {
  const Text wanted = Fold_Case(From_Utf8(component));
  std::string best;
  Text best_name;
  For_Each_Entry(folder, [&](const char* name, unsigned char) {
    Text wide = From_Utf8(name);
    if (wide.size() != wanted.size() || Fold_Case(wide) != wanted) return;
    if (!best.empty() && best_name < wide) return;
    std::string path = Below(folder, name);
    if (!Is_Kind(path, kind)) return;
    best = std::move(path);
    best_name = std::move(wide);
  });
  return best;
}

bool Is_Dots(std::string_view component) {
  return component == "." || component == "..";
}

// Empty if there is none.
std::string Enter(const std::string& folder, std::string_view component, bool is_below_root) {
  std::string spelled = Below(folder, component);
  if ((Is_Dots(component) || !is_below_root) && Is_Kind(spelled, S_IFDIR)) return spelled;
  return Is_Kind(folder, S_IFDIR) ? First_That_Fits(folder, component, S_IFDIR) : std::string();
}

bool Both_Slashes(char first, char second) {
  return first == '/' && second == '/';
}

}  // namespace

void Native_Paths::Set_Root(Text_View path) {
  // An empty root is that of the paths that begin with a separator.
  Root = Spell(path.empty() ? u"/" : path);
  Known_Folders.clear();
}

Native_Paths::Spelled_Path Native_Paths::Spell(Text_View path) const {
  if (!Can_Be_Spelled(path)) throw Failure();
  std::string bytes = To_Original_Bytes(path);
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
  std::string& rest = spelled.Rest;
  rest.erase(std::unique(rest.begin(), rest.end(), Both_Slashes), rest.end());
  return spelled;
}

std::size_t Native_Paths::Length_Of_Root(const Spelled_Path& spelled) const {
  if (!Root || spelled.Start != Root->Start) return std::string::npos;
  const std::size_t length = Root->Rest.size();
  if (length == 0) return 0;
  const bool is_below = spelled.Rest.size() > length && spelled.Rest[length] == '/' &&
                        spelled.Rest.starts_with(Root->Rest);
  return is_below ? length : std::string::npos;
}

std::optional<std::string> Native_Paths::Find_Folder(const Spelled_Path& spelled) {
  const std::size_t root = Length_Of_Root(spelled);
  const std::string whole = spelled.Start + spelled.Rest;
  if (const auto known = Known_Folders.find(whole);
      known != Known_Folders.end() && Is_Kind(known->second, S_IFDIR))
    return known->second;
  std::string folder = spelled.Start;
  for (std::size_t begin = 0; begin < spelled.Rest.size();) {
    const std::size_t end = std::min(spelled.Rest.find('/', begin), spelled.Rest.size());
    const std::string_view component = std::string_view(spelled.Rest).substr(begin, end - begin);
    folder = Enter(folder, component, begin >= root);
    if (folder.empty()) return std::nullopt;
    begin = end + 1;
  }
  if (root != std::string::npos) Known_Folders[whole] = folder;
  return folder;
}

std::optional<std::string> Native_Paths::Folder_Around(Spelled_Path spelled) {
  spelled.Rest.resize(spelled.Rest.size() - Name_Of(spelled.Rest).size());
  if (!spelled.Rest.empty()) spelled.Rest.pop_back();
  return Find_Folder(spelled);
}

std::optional<std::string> Native_Paths::Look_For_Folder(Text_View path) {
  if (!Can_Be_Spelled(path)) return std::nullopt;
  const auto folder = Find_Folder(Spell(path));
  return folder && Is_Kind(*folder, S_IFDIR) ? folder : std::nullopt;
}

std::optional<std::string> Native_Paths::Look_For_File(Text_View path) {
  if (!Can_Be_Spelled(path)) return std::nullopt;
  const Spelled_Path spelled = Spell(path);
  const auto folder = Folder_Around(spelled);
  if (!folder || spelled.Rest.empty()) return std::nullopt;
  const std::string_view name = Name_Of(spelled.Rest);
  std::string file = Below(*folder, name);
  if (!Is_Kind(file, S_IFREG)) file = First_That_Fits(*folder, name, S_IFREG);
  return file.empty() ? std::nullopt : std::optional(std::move(file));
}

std::string Native_Paths::Existing_Folder(Text_View path) {
  auto found = Look_For_Folder(path);
  if (!found) throw Failure();
  return *std::move(found);
}

std::string Native_Paths::Existing_File(Text_View path) {
  auto found = Look_For_File(path);
  if (!found) throw Failure();
  return *std::move(found);
}

std::string Native_Paths::To_Be_Made(Text_View path) {
  const Spelled_Path spelled = Spell(path);
  const auto folder = Folder_Around(spelled);
  if (!folder || spelled.Rest.empty()) throw Failure();
  return Below(*folder, Name_Of(spelled.Rest));
}

std::string Native_Paths::Folder_To_Be_Made(Text_View path) {
  if (Look_For_Folder(path)) throw Failure();
  return To_Be_Made(path);
}

std::string_view Name_Of(std::string_view native_path) {
  return native_path.substr(native_path.rfind('/') + 1);
}

std::string Folder_Of(const std::string& native_path) {
  const std::size_t slash = native_path.rfind('/');
  return slash == std::string::npos ? "." : native_path.substr(0, slash + 1);
}

}  // namespace rivelt
