#include "platform/linux/files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <limits>

#include "platform/linux/descriptor.h"
#include "text/letter_case.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

constexpr unsigned Permissions = 0777;

Kind Kind_Of(mode_t mode) {
  return S_ISREG(mode) ? Kind::File : S_ISDIR(mode) ? Kind::Folder : Kind::Other;
}

// The ends of the range for a time beyond them.
std::int64_t Nanoseconds(const timespec& time) {
  constexpr std::int64_t second = 1'000'000'000;
  constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
  if (time.tv_sec >= most / second) return most;
  if (time.tv_sec <= -most / second) return -most;
  return time.tv_sec * second + time.tv_nsec;
}

class Linux_Source : public Source {
 public:
  Linux_Source(const Linux_Files& files, const Text& path) : Files(files), Path(path) {
    // Does not wait for anything else of that name.
    Input = Open_Descriptor(To_Original_Bytes(path), O_RDONLY | O_NONBLOCK);
    if (!Input.Is_Open() || fstat(Input.Number(), &State) != 0) throw Files.Refused_By_System(Path);
    if (!S_ISREG(State.st_mode)) throw Files.Refused(Path, u"no regular file");
  }

  std::uint64_t Size() const override { return static_cast<std::uint64_t>(State.st_size); }

  std::size_t Read(char* bytes, std::size_t room) override {
    ssize_t count = 0;
    do {
      count = read(Input.Number(), bytes, room);
    } while (count < 0 && errno == EINTR);
    if (count < 0) throw Files.Refused_By_System(Path);
    return static_cast<std::size_t>(count);
  }

 private:
  const Linux_Files& Files;
  Text Path;
  Descriptor Input;
  struct stat State {};
};

struct Close_Folder {
  void operator()(DIR* folder) const { closedir(folder); }
};

}  // namespace

Failure Linux_Files::Refused_By_System(Text_View path) const {
  return Refused(path, errno == ENOSPC ? u"disk full" : From_Utf8(std::strerror(errno)));
}

std::optional<Entry> Linux_Files::Look(const Text& path) const {
  const std::string bytes = path.empty() ? "." : To_Original_Bytes(path);
  struct stat state {};
  int status = lstat(bytes.c_str(), &state);
  const bool is_link = status == 0 && S_ISLNK(state.st_mode);
  if (is_link) status = stat(bytes.c_str(), &state);
  if (status != 0) {
    if (errno == ENOENT || errno == ENOTDIR || errno == ENAMETOOLONG) return std::nullopt;
    throw Refused_By_System(path);
  }
  return Entry{.What = Kind_Of(state.st_mode),
               .Is_Link = is_link,
               .Is_Read_Only = (state.st_mode & S_IWUSR) == 0,
               .State = {.Size = static_cast<std::uint64_t>(state.st_size),
                         .Modified = Nanoseconds(state.st_mtim),
                         .Came = Nanoseconds(state.st_ctim),
                         .Identity = {state.st_dev, state.st_ino},
                         .Names = static_cast<std::uint32_t>(state.st_nlink)}};
}

std::vector<Name_Key> Linux_Files::Names(const Text& folder, Kind kind) const {
  const std::string bytes = folder.empty() ? "." : To_Original_Bytes(folder);
  const std::unique_ptr<DIR, Close_Folder> opened(opendir(bytes.c_str()));
  if (!opened) throw Refused_By_System(folder);
  std::vector<Name_Key> names;
  for (;;) {
    errno = 0;
    const dirent* entry = readdir(opened.get());
    if (entry == nullptr && errno != 0) throw Refused_By_System(folder);
    if (entry == nullptr) return names;
    const std::string_view name = entry->d_name;
    // No path of the program leads to a name with a separator in it.
    if (name == "." || name == ".." || name.find('\\') != std::string_view::npos) continue;
    Kind found = Kind_Of(static_cast<mode_t>(DTTOIF(entry->d_type)));
    if (entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN) {
      struct stat state {};
      const bool leads = fstatat(dirfd(opened.get()), entry->d_name, &state, 0) == 0;
      found = leads ? Kind_Of(state.st_mode) : Kind::Other;
    }
    if (found == kind) names.push_back(Key_Of(From_Utf8(name)));
  }
}

std::unique_ptr<Source> Linux_Files::Open(const Text& path) const {
  return std::make_unique<Linux_Source>(*this, path);
}

std::unique_ptr<Draft> Linux_Files::Make(const Text& path) {
  // A link to a file that is replaced goes on leading there.
  const std::filesystem::path place = To_Original_Bytes(path);
  std::error_code leads_nowhere;
  if (!is_symlink(place)) return Make_Draft(*this, path);
  const auto target = canonical(place, leads_nowhere);
  return Make_Draft(*this, leads_nowhere ? path : From_Utf8(target.native()));
}

void Linux_Files::Make_Folder(const Text& path) {
  if (mkdir(To_Original_Bytes(path).c_str(), Permissions) != 0) throw Refused_By_System(path);
}

bool Linux_Files::Rename(const Text& path, const Text& target) {
  if (Rename_To_Free_Name(To_Original_Bytes(path), To_Original_Bytes(target))) return true;
  if (errno == EXDEV) return false;
  throw Refused_By_System(errno == EEXIST ? target : path);
}

bool Linux_Files::Link(const Text& path, const Text& target) {
  return link(To_Original_Bytes(path).c_str(), To_Original_Bytes(target).c_str()) == 0;
}

void Linux_Files::Delete(const Text& path) {
  if (unlink(To_Original_Bytes(path).c_str()) != 0) throw Refused_By_System(path);
}

void Linux_Files::Delete_Folder(const Text& path) {
  if (rmdir(To_Original_Bytes(path).c_str()) != 0) throw Refused_By_System(path);
}

void Linux_Files::Set_Mode(const Text& path, const Text& model) {
  struct stat state {};
  if (stat(To_Original_Bytes(model).c_str(), &state) != 0) throw Refused_By_System(model);
  // Not every file system has permissions.
  static_cast<void>(chmod(To_Original_Bytes(path).c_str(), state.st_mode & 0777));
}

void Linux_Files::Flush(const Text& folder) {
  const Descriptor opened = Open_Descriptor(To_Original_Bytes(folder), O_RDONLY | O_DIRECTORY);
  if (!opened.Is_Open()) throw Refused_By_System(folder);
  const bool is_lost =
      syncfs(opened.Number()) != 0 && (errno == EIO || errno == ENOSPC || errno == EDQUOT);
  if (is_lost) throw Refused_By_System(folder);
}

std::shared_ptr<void> Linux_Files::Lock(const Text& folder) {
  auto held = std::make_shared<Descriptor>(
      Open_Descriptor(To_Original_Bytes(folder), O_RDONLY | O_DIRECTORY));
  if (!held->Is_Open()) throw Refused_By_System(folder);
  // An advisory lock on the folder itself needs no file and dies with the process.
  if (flock(held->Number(), LOCK_EX | LOCK_NB) == 0) return held;
  if (errno == EWOULDBLOCK) throw Failure(Text(Locked_By_Another));
  return nullptr;
}

std::string Linux_Files::Narrow(Text_View text) const {
  return To_Utf8(text);
}

std::unique_ptr<File_System_Object> Files_Of_Linux(const std::string& wine_prefix) {
  return Files_Over(std::make_unique<Linux_Files>(wine_prefix));
}

}  // namespace rivelt
