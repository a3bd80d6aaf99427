#include "platform/linux/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <utility>

#include "platform/linux/descriptor.h"

namespace rivelt {
namespace {

class Locked_Folder : public Folder_Lock {
 public:
  Locked_Folder(std::string path, Descriptor folder)
      : Path(std::move(path)), Held_Folder(std::move(folder)) {}

  bool In_Force() const override {
    struct stat held {};
    struct stat standing {};
    return fstat(Held_Folder.Number(), &held) == 0 && stat(Path.c_str(), &standing) == 0 &&
           held.st_dev == standing.st_dev && held.st_ino == standing.st_ino;
  }

 private:
  std::string Path;
  Descriptor Held_Folder;
};

}  // namespace

std::unique_ptr<Folder_Lock> Lock_Folder(const std::string& path) {
  Descriptor folder = Open(path, O_RDONLY | O_DIRECTORY);
  if (!folder.Is_Open() || flock(folder.Number(), LOCK_EX | LOCK_NB) != 0) throw Failure();
  return std::make_unique<Locked_Folder>(path, std::move(folder));
}

}  // namespace rivelt
