#include "platform/linux/walk_folder.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include "text/letter_case.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

struct Close_Folder {
  void operator()(DIR* folder) const { closedir(folder); }
};

struct Found_Name {
  Name_Key Key;
  std::string Native;
};

bool Differ_In_Case_Alone(const Found_Name& first, const Found_Name& second) {
  return first.Key.Folded == second.Key.Folded;
}

bool Is_Kind(const std::string& folder, const char* name, unsigned char entry_kind, mode_t kind) {
  if (entry_kind != DT_LNK && entry_kind != DT_UNKNOWN) return entry_kind == IFTODT(kind);
  struct stat state {};
  return stat(Below(folder, name).c_str(), &state) == 0 && (state.st_mode & S_IFMT) == kind;
}

}  // namespace

std::string Below(const std::string& folder, std::string_view name) {
  std::string path = folder;
  if (!path.empty() && path.back() != '/') path += '/';
  return path.append(name);
}

void For_Each_Entry(const std::string& folder,
                    const std::function<void(const char* name, unsigned char kind)>& visit) {
  const std::unique_ptr<DIR, Close_Folder> opened(opendir(folder.empty() ? "." : folder.c_str()));
  if (!opened) throw Failure();
  for (;;) {
    errno = 0;
    const dirent* entry = readdir(opened.get());
    if (entry == nullptr && errno != 0) throw Failure();
    if (entry == nullptr) return;
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") visit(entry->d_name, entry->d_type);
  }
}

std::vector<std::string> Names_In_Order(const std::string& folder, mode_t kind) {
  std::vector<Found_Name> found;
  For_Each_Entry(folder, [&](const char* name, unsigned char entry_kind) {
    // No path of the program leads to a name with a separator in it.
    if (std::string_view(name).find('\\') != std::string_view::npos) return;
    if (!Is_Kind(folder, name, entry_kind, kind)) return;
    found.push_back({Key_Of(From_Utf8(name)), name});
  });
  std::ranges::sort(found, {}, &Found_Name::Key);
  if (kind == S_IFDIR) {
    // No path leads to the others, so that they would pass for this one.
    found.erase(std::unique(found.begin(), found.end(), Differ_In_Case_Alone), found.end());
  }
  std::vector<std::string> names;
  names.reserve(found.size());
  for (Found_Name& item : found) names.push_back(std::move(item.Native));
  return names;
}

}  // namespace rivelt
