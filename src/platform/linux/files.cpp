#include "platform/linux/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "platform/linux/descriptor.h"
#include "platform/linux/file_actions.h"
#include "platform/linux/folder_lock.h"
#include "platform/linux/staged_file.h"
#include "platform/linux/text_streams.h"
#include "platform/linux/walk_folder.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

using Shared_Paths = std::shared_ptr<Native_Paths>;

void Delete_File(const std::string& path, bool force) {
  struct stat state {};
  if (!force && (stat(path.c_str(), &state) != 0 || (state.st_mode & S_IWUSR) == 0))
    throw Failure();
  if (unlink(path.c_str()) != 0) throw Failure();
}

File_State State_Of(const std::string& path) {
  struct stat state {};
  if (stat(path.c_str(), &state) != 0 || !S_ISREG(state.st_mode)) throw Failure();
  constexpr std::int64_t second = 1'000'000'000;
  return {.Size = static_cast<std::uint64_t>(state.st_size),
          .Modified = state.st_mtim.tv_sec * second + state.st_mtim.tv_nsec,
          .Identity = {state.st_dev, state.st_ino},
          .Names = static_cast<std::uint32_t>(state.st_nlink)};
}

class Linux_File : public File {
 public:
  Linux_File(Shared_Paths paths, std::string path)
      : Paths(std::move(paths)), Path(std::move(path)) {}

  Text name() const override { return From_Utf8(Name_Of(Path)); }

  std::unique_ptr<Read_Stream> OpenAsTextStream(int /*mode*/, int /*format*/) override {
    return Open_Read_Stream(Path);
  }

  void Delete(bool force) override { Delete_File(Path, force); }

  void Move(Text_View target_path) override {
    std::string target = Paths->To_Be_Made(target_path);
    Move_File(Path, target);
    Path = std::move(target);
  }

  void Copy(Text_View target_path) override { Copy_File(Path, Paths->To_Be_Made(target_path)); }
  void Keep(Text_View target_path) override { Keep_File(Path, Paths->To_Be_Made(target_path)); }

  void Take_Mode_Of(Text_View path) override {
    struct stat model {};
    // Not every file system has permissions.
    if (stat(Paths->Existing_File(path).c_str(), &model) != 0) throw Failure();
    static_cast<void>(chmod(Path.c_str(), model.st_mode & 0777));
  }

  File_State State() const override { return State_Of(Path); }

  void Read_Bytes(const std::function<void(std::string_view)>& take) const override {
    const Descriptor source = Open_Regular_File(Path);
    if (!source.Is_Open()) throw Failure();
    Read_In_Pieces(source, take);
  }

 private:
  Shared_Paths Paths;
  std::string Path;
};

class Linux_Folder : public Folder {
 public:
  Linux_Folder(Shared_Paths paths, std::string path)
      : Paths(std::move(paths)), Path(std::move(path)) {}

  Text name() const override { return From_Utf8(Name_Of(Path)); }
  Collection<Folder> SubFolders() const override { return Items<Folder, Linux_Folder>(S_IFDIR); }
  Collection<File> Files() const override { return Items<File, Linux_File>(S_IFREG); }

 private:
  template <class Item, class Linux_Item>
  Collection<Item> Items(mode_t kind) const {
    std::vector<std::unique_ptr<Item>> items;
    for (const std::string& native_name : Names_In_Order(Path, kind))
      items.push_back(std::make_unique<Linux_Item>(Paths, Below(Path, native_name)));
    return Collection<Item>(std::move(items));
  }

  Shared_Paths Paths;
  std::string Path;
};

}  // namespace

void Linux_File_System::Set_Root(Text_View path) {
  Paths->Set_Root(path);
}

std::unique_ptr<File> Linux_File_System::GetFile(Text_View path) {
  return std::make_unique<Linux_File>(Paths, Paths->Existing_File(path));
}

std::unique_ptr<Folder> Linux_File_System::GetFolder(Text_View path) {
  return std::make_unique<Linux_Folder>(Paths, Paths->Existing_Folder(path));
}

bool Linux_File_System::FolderExists(Text_View path) {
  return Paths->Look_For_Folder(path).has_value();
}

std::unique_ptr<File> Linux_File_System::FindFile(Text_View path) {
  auto found = Paths->Look_For_File(path);
  return found ? std::make_unique<Linux_File>(Paths, *std::move(found)) : nullptr;
}

void Linux_File_System::CreateFolder(Text_View path) {
  if (mkdir(Paths->Folder_To_Be_Made(path).c_str(), 0777) != 0) throw Failure();
}

std::unique_ptr<Write_Stream> Linux_File_System::CreateTextFile(Text_View path, bool overwrite,
                                                                bool unicode) {
  return Make_Write_Stream(Paths->To_Be_Made(path), overwrite, unicode);
}

void Linux_File_System::DeleteFile(Text_View path, bool force) {
  Delete_File(Paths->Existing_File(path), force);
}

void Linux_File_System::MoveFolder(Text_View path, Text_View target_path) {
  const std::string source = Paths->Existing_Folder(path);
  if (!Rename_To_Free_Name(source, Paths->Folder_To_Be_Made(target_path))) throw Failure();
}

void Linux_File_System::DeleteFolder(Text_View path) {
  if (rmdir(Paths->Existing_Folder(path).c_str()) != 0) throw Failure();
}

void Linux_File_System::Flush(Text_View folder_path) {
  const Descriptor folder = Open(Paths->Existing_Folder(folder_path), O_RDONLY | O_DIRECTORY);
  if (!folder.Is_Open() || syncfs(folder.Number()) != 0) throw Failure();
}

std::unique_ptr<Folder_Lock> Linux_File_System::Lock(Text_View folder_path) {
  return Lock_Folder(Paths->Existing_Folder(folder_path));
}

}  // namespace rivelt
