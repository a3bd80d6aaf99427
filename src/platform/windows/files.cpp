#include "platform/windows/files.h"

#include <utility>
#include <vector>

#include "platform/windows/file_actions.h"
#include "platform/windows/folder_lock.h"
#include "platform/windows/paths.h"
#include "platform/windows/text_streams.h"
#include "platform/windows/walk_folder.h"
#include "platform/windows/win32.h"

namespace rivelt {
namespace {

// Nothing is said about what cannot be opened for writing: a file that is read-only, or that its
// holder writes to, and on many file systems the folder.
void Flush_If_Possible(const std::wstring& path) {
  const HANDLE handle = CreateFileW(path.c_str(), GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle != INVALID_HANDLE_VALUE) FlushFileBuffers(Owned_Handle(handle).get());
}

class Windows_File : public File {
 public:
  explicit Windows_File(std::wstring path) : Path(std::move(path)) {}

  Text name() const override { return Last_Name(Path); }
  std::unique_ptr<Read_Stream> OpenAsTextStream(int /*mode*/, int /*format*/) override {
    return Open_Read_Stream(Path);
  }
  void Delete(bool force) override { Delete_File(Path, force); }
  void Move(Text_View target_path) override {
    std::wstring target = Full_Path(target_path);
    Move_File(Path, target);
    Path = std::move(target);
  }
  void Copy(Text_View target_path) override { Copy_File(Path, Full_Path(target_path)); }
  void Keep(Text_View target_path) override { Keep_File(Path, Full_Path(target_path)); }
  void Take_Mode_Of(Text_View path) override {
    const bool is_read_only = State_Of(Full_Path(path)).Is_Read_Only;
    Flush_If_Possible(Path);  // which a read-only file cannot be
    SetFileAttributesW(Path.c_str(),
                       is_read_only ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL);
  }
  File_State State() const override { return State_Of_File(Path); }
  void Read_Bytes(const std::function<void(std::string_view)>& take) const override {
    rivelt::Read_Bytes(Path, take);
  }

 private:
  std::wstring Path;
};

class Windows_Folder : public Folder {
 public:
  explicit Windows_Folder(std::wstring path) : Path(std::move(path)) {}

  Text name() const override { return Last_Name(Path); }
  Collection<Folder> SubFolders() const override { return Items<Folder, Windows_Folder>(true); }
  Collection<File> Files() const override { return Items<File, Windows_File>(false); }

 private:
  template <class Item, class Windows_Item>
  Collection<Item> Items(bool folders) const {
    std::vector<std::unique_ptr<Item>> items;
    for (const std::wstring& entry : Names_In_Order(Path, folders)) {
      items.push_back(std::make_unique<Windows_Item>(Path_In(Path, entry)));
    }
    return Collection<Item>(std::move(items));
  }

  std::wstring Path;
};

// Nothing can stand under a text that is no path.
Path_State State_Of_Any(Text_View path) {
  std::wstring full;
  try {
    full = Full_Path(path);
  } catch (const Failure&) {
    return {};
  }
  return State_Of(full);
}

void Flush_Folder(const std::wstring& path) {
  Require(State_Of(path).Is_Folder);
  for (const std::wstring& name : Names_In_Order(path, false))
    Flush_If_Possible(Path_In(path, name));
  Flush_If_Possible(path);
}

class Windows_File_System : public File_System_Object {
 public:
  std::unique_ptr<File> GetFile(Text_View path) override {
    const std::wstring full = Full_Path(path);
    const Path_State state = State_Of(full);
    Require(state.Exists && !state.Is_Folder);
    return std::make_unique<Windows_File>(As_On_Disk(full));
  }

  std::unique_ptr<Folder> GetFolder(Text_View path) override {
    const std::wstring full = Full_Path(path);
    Require(State_Of(full).Is_Folder);
    return std::make_unique<Windows_Folder>(As_On_Disk(full));
  }

  bool FolderExists(Text_View path) override { return State_Of_Any(path).Is_Folder; }

  void CreateFolder(Text_View path) override {
    Require(CreateDirectoryW(Full_Path(path).c_str(), nullptr));
  }

  std::unique_ptr<Write_Stream> CreateTextFile(Text_View path, bool overwrite,
                                               bool unicode) override {
    return Make_Write_Stream(Full_Path(path), overwrite, unicode);
  }

  void DeleteFile(Text_View path, bool force) override { Delete_File(Full_Path(path), force); }

  std::unique_ptr<File> FindFile(Text_View path) override {
    const Path_State state = State_Of_Any(path);
    return state.Exists && !state.Is_Folder ? GetFile(path) : nullptr;
  }

  void MoveFolder(Text_View path, Text_View target_path) override {
    const std::wstring full = Full_Path(path);
    Require(State_Of(full).Is_Folder);
    Move_Folder(full, Full_Path(target_path));
  }

  void DeleteFolder(Text_View path) override { Require(RemoveDirectoryW(Full_Path(path).c_str())); }

  void Flush(Text_View folder_path) override { Flush_Folder(Full_Path(folder_path)); }

  std::unique_ptr<Folder_Lock> Lock(Text_View folder_path) override {
    return Lock_Folder(Full_Path(folder_path));
  }
};

}  // namespace

std::unique_ptr<File_System_Object> Windows_Files() {
  return std::make_unique<Windows_File_System>();
}

}  // namespace rivelt
