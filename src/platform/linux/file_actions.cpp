#include "platform/linux/file_actions.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>

#include "platform/linux/descriptor.h"
#include "platform/linux/staged_file.h"
#include "text/text.h"

namespace rivelt {
namespace {

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

bool Has_One_Name(const std::string& path) {
  struct stat state {};
  return lstat(path.c_str(), &state) == 0 && S_ISREG(state.st_mode) && state.st_nlink == 1;
}

void Fill(Staged_File& copy, const std::string& from) {
  const Descriptor source = Open_Regular_File(from);
  if (!source.Is_Open()) throw Failure();
  Read_In_Pieces(source, [&](std::string_view piece) { copy.Write({}, piece); });
  Copy_Attributes(source, copy.Handle());
}

// A file that has given up its name to one of ours, and gets it back unless it is removed.
class Set_Aside {
 public:
  explicit Set_Aside(const std::string& path) : Path(path) {
    do {
      Aside = Temporary_Beside(path);
      if (Rename_To_Free_Name(path, Aside)) return;
    } while (errno == EEXIST);
    throw Failure();
  }
  Set_Aside(const Set_Aside&) = delete;
  Set_Aside& operator=(const Set_Aside&) = delete;
  ~Set_Aside() {
    if (!Aside.empty()) Rename_To_Free_Name(Aside, Path);
  }

  bool Remove() {
    if (unlink(Aside.c_str()) != 0) return false;
    Aside.clear();
    return true;
  }

 private:
  std::string Path;
  std::string Aside;
};

void Move_By_Copy(const std::string& from, const std::string& to) {
  Staged_File copy(to);
  Fill(copy, from);
  Set_Aside source(from);
  copy.Flush();  // the two disks are written independently of each other
  copy.Take_Place(false);
  if (source.Remove()) return;
  unlink(to.c_str());
  throw Failure();
}

}  // namespace

void Copy_File(const std::string& from, const std::string& to) {
  Staged_File copy(to);
  Fill(copy, from);
  copy.Take_Place(false);
}

void Keep_File(const std::string& from, const std::string& to) {
  if (Has_One_Name(from)) {
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
  Move_By_Copy(from, to);
}

}  // namespace rivelt
