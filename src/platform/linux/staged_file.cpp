#include "platform/linux/staged_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "platform/linux/paths.h"
#include "platform/linux/walk_folder.h"
#include "system/file_service.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

constexpr unsigned Permissions = 0666;  // less the umask

}  // namespace

bool Rename_To_Free_Name(const std::string& from, const std::string& to) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP) return false;
  // Not every file system can refuse in the same step.
  struct stat state {};
  if (lstat(to.c_str(), &state) == 0) errno = EEXIST;
  return errno == ENOENT && rename(from.c_str(), to.c_str()) == 0;
}

std::string Temporary_Beside(const std::string& path) {
  static unsigned long count = 0;
  const std::string name =
      To_Utf8(Temporary_Prefix) + std::to_string(getpid()) + "-" + std::to_string(++count);
  return Below(Folder_Of(path), name);
}

Staged_File::Staged_File(const std::string& path) : Path(path) {
  Content = Open(Folder_Of(path), O_TMPFILE | O_WRONLY, Permissions);
  if (!Content.Is_Open()) Open_Beside();
}

Staged_File::~Staged_File() {
  if (!Temporary.empty()) unlink(Temporary.c_str());
}

void Staged_File::Open_Beside() {
  std::string temporary;
  do {
    temporary = Temporary_Beside(Path);
    Content = Open(temporary, O_CREAT | O_EXCL | O_WRONLY, Permissions);
  } while (!Content.Is_Open() && errno == EEXIST);
  if (!Content.Is_Open()) throw Failure();
  Temporary = std::move(temporary);
}

void Staged_File::Write(std::string_view head, std::string_view body) {
  Is_Whole = false;
  while (!head.empty() || !body.empty()) {
    const iovec parts[] = {{const_cast<char*>(head.data()), head.size()},
                           {const_cast<char*>(body.data()), body.size()}};
    const ssize_t written = writev(Content.Number(), parts, 2);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) throw Failure();
    const std::size_t count = static_cast<std::size_t>(written);
    const std::size_t of_head = std::min(count, head.size());
    head.remove_prefix(of_head);
    body.remove_prefix(count - of_head);
  }
  Is_Whole = true;
}

// A file system across a network may tell of a full disk only when a descriptor is closed. Closing
// a second one asks for that answer while the file can still be given up.
void Staged_File::Make_Sure_It_Is_Stored() const {
  const int second = fcntl(Content.Number(), F_DUPFD_CLOEXEC, 0);
  if (second < 0 || close(second) != 0) throw Failure();
}

void Staged_File::Flush() const {
  if (fdatasync(Content.Number()) != 0) throw Failure();
}

bool Staged_File::Link(const std::string& path) const {
  const std::string itself = "/proc/self/fd/" + std::to_string(Content.Number());
  return linkat(AT_FDCWD, itself.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

void Staged_File::Link_Beside() {
  std::string temporary;
  do {
    temporary = Temporary_Beside(Path);
    if (Link(temporary)) Temporary = temporary;
  } while (Temporary.empty() && errno == EEXIST);
  if (Temporary.empty()) throw Failure();
}

void Staged_File::Take_Place(bool replace) {
  if (!Is_Whole) throw Failure();
  Is_Whole = false;
  Make_Sure_It_Is_Stored();
  if (Temporary.empty()) {
    if (Link(Path)) return;
    if (errno != EEXIST || !replace) throw Failure();
    // No call links a file over another.
    Link_Beside();
  }
  // Or a loss of power could leave neither the old content nor the new one.
  if (replace) Flush();
  const bool renamed =
      replace ? rename(Temporary.c_str(), Path.c_str()) == 0 : Rename_To_Free_Name(Temporary, Path);
  if (!renamed) throw Failure();
  Temporary.clear();
}

}  // namespace rivelt
