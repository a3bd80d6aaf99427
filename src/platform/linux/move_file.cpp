#include "platform/linux/move_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

#include "platform/linux/descriptor.h"
#include "platform/linux/new_file.h"
#include "text/text.h"

namespace rivelt {
namespace {

constexpr std::size_t Copied_At_Once = std::size_t{1} << 20;

void Copy_Content(const Descriptor& source, New_File& copy) {
  std::vector<char> buffer(Copied_At_Once);
  for (;;) {
    const long count = Read(source, buffer.data(), buffer.size());
    if (count < 0) throw Failure();
    if (count == 0) return;
    copy.Write({}, {buffer.data(), static_cast<std::size_t>(count)});
  }
}

// Not every file system keeps them, so that they are no reason to give up.
void Copy_Attributes(const Descriptor& source, const Descriptor& copy) {
  struct stat state {};
  if (fstat(source.Number(), &state) != 0) return;
  const timespec times[] = {state.st_atim, state.st_mtim};
  static_cast<void>(fchmod(copy.Number(), state.st_mode & 0777) == 0 &&
                    futimens(copy.Number(), times) == 0);
}

bool Is_Link(const std::string& path) {
  struct stat state {};
  return lstat(path.c_str(), &state) == 0 && S_ISLNK(state.st_mode);
}

}  // namespace

void Copy_File(const std::string& from, const std::string& to) {
  const Descriptor source = Open_Regular_File(from);
  if (!source.Is_Open()) throw Failure();
  New_File copy(to);
  Copy_Content(source, copy);
  Copy_Attributes(source, copy.Handle());
  copy.Commit(false);
}

void Keep_File(const std::string& from, const std::string& to) {
  if (!Is_Link(from)) {
    if (link(from.c_str(), to.c_str()) == 0) return;
    if (errno == EEXIST) throw Failure();
  }
  Copy_File(from, to);
}

void Move_File(const std::string& from, const std::string& to) {
  // A link that was renamed into another folder might lead nowhere from there.
  if (!Is_Link(from)) {
    if (Rename_To_Free_Name(from, to)) return;
    if (errno != EXDEV) throw Failure();
  }
  Copy_File(from, to);
  if (unlink(from.c_str()) == 0) return;
  unlink(to.c_str());
  throw Failure();
}

}  // namespace rivelt
