#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/linux/descriptor.h"
#include "platform/linux/files.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

constexpr unsigned Permissions = 0666;  // less the umask

// Has no name until it is complete, so that nothing is left of it when the process ends. Where the
// file system cannot do that it has one of ours meanwhile.
class Linux_Draft : public Draft {
 public:
  Linux_Draft(const Linux_Files& files, const Text& path)
      : Files(files),
        Path(path),
        Target(To_Original_Bytes(path)),
        Temporary(To_Original_Bytes(files.Temporary_Beside(path))) {
    const std::string folder = Target.substr(0, Target.rfind('/') + 1);
    Content = Open_Descriptor(folder.empty() ? "." : folder, O_TMPFILE | O_WRONLY, Permissions);
    if (Content.Is_Open()) return;
    Content = Open_Descriptor(Temporary, O_CREAT | O_EXCL | O_WRONLY, Permissions);
    Has_Temporary = Content.Is_Open();
    if (!Has_Temporary) throw Refused();
  }
  Linux_Draft(const Linux_Draft&) = delete;
  Linux_Draft& operator=(const Linux_Draft&) = delete;
  ~Linux_Draft() override {
    if (Has_Temporary) unlink(Temporary.c_str());
  }

  void Write(std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t count = write(Content.Number(), bytes.data(), bytes.size());
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) throw Refused();
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
  }

  void Take_After(const Text& path, bool with_times) override {
    struct stat state {};
    if (stat(To_Original_Bytes(path).c_str(), &state) != 0) return;
    const timespec times[] = {state.st_atim, state.st_mtim};
    // Not every file system keeps them, so they are no reason to give up.
    static_cast<void>(fchmod(Content.Number(), state.st_mode & 0777) == 0 && with_times &&
                      futimens(Content.Number(), times) == 0);
  }

  void Flush() override {
    if (fdatasync(Content.Number()) != 0 && (errno == EIO || errno == ENOSPC || errno == EDQUOT))
      throw Refused();
  }

  bool Take_Name(bool replace) override {
    Make_Sure_It_Is_Stored();
    // No call links a file over another.
    if (!Has_Temporary) {
      if (Link(replace ? Temporary : Target)) {
        if (!replace) return true;
        Has_Temporary = true;
      }
    }
    const bool renamed = Has_Temporary && (replace ? rename(Temporary.c_str(), Target.c_str()) == 0
                                                   : Rename_To_Free_Name(Temporary, Target));
    if (!renamed && errno == EEXIST && !replace) return false;
    if (!renamed) throw Refused();
    Has_Temporary = false;
    return true;
  }

 private:
  Failure Refused() const { return Files.Refused_By_System(Path); }

  // A file system across a network may report a full disk only when a descriptor is closed. Closing
  // a second one asks for that answer while the file can still be given up.
  void Make_Sure_It_Is_Stored() const {
    const int second = fcntl(Content.Number(), F_DUPFD_CLOEXEC, 0);
    if (second < 0 || close(second) != 0) throw Refused();
  }

  bool Link(const std::string& path) const {
    const std::string itself = "/proc/self/fd/" + std::to_string(Content.Number());
    return linkat(AT_FDCWD, itself.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
  }

  const Linux_Files& Files;
  Text Path;
  std::string Target;
  std::string Temporary;
  Descriptor Content;
  bool Has_Temporary = false;
};

}  // namespace

bool Rename_To_Free_Name(const std::string& path, const std::string& target) {
  if (renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0)
    return true;
  if (errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP) return false;
  // Not every file system can refuse in the same step.
  struct stat state {};
  if (lstat(target.c_str(), &state) == 0) errno = EEXIST;
  return errno == ENOENT && rename(path.c_str(), target.c_str()) == 0;
}

std::unique_ptr<Draft> Make_Draft(const Linux_Files& files, const Text& path) {
  return std::make_unique<Linux_Draft>(files, path);
}

}  // namespace rivelt
