#include "platform/windows/folder_lock.h"

#include "platform/windows/win32.h"

namespace rivelt {
namespace {

Owned_Handle Open_Folder(const std::wstring& path) {
  const HANDLE handle =
      CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  Require(handle != INVALID_HANDLE_VALUE);
  return Owned_Handle(handle);
}

// What tells a folder from all others of the computer while it is open.
std::wstring Identity_Of(HANDLE folder) {
  BY_HANDLE_FILE_INFORMATION information{};
  Require(GetFileInformationByHandle(folder, &information));
  Require((information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0);
  return std::to_wstring(information.dwVolumeSerialNumber) + L"-" +
         std::to_wstring(information.nFileIndexHigh) + L"-" +
         std::to_wstring(information.nFileIndexLow);
}

class Windows_Folder_Lock : public Folder_Lock {
 public:
  explicit Windows_Folder_Lock(const std::wstring& path)
      : Path(path), Folder_Handle(Open_Folder(path)), Identity(Identity_Of(Folder_Handle.get())) {
    Named_Object.reset(CreateMutexW(nullptr, FALSE, (L"Global\\Rivelt-" + Identity).c_str()));
    Require(GetLastError() != ERROR_ALREADY_EXISTS);
    Require(Named_Object != nullptr);
  }

  bool In_Force() const override try {
    return Identity_Of(Open_Folder(Path).get()) == Identity;
  } catch (const Failure&) {
    return false;
  }

 private:
  std::wstring Path;
  Owned_Handle Folder_Handle;  // open, so that no other folder gets its identity
  std::wstring Identity;
  Owned_Handle Named_Object;
};

}  // namespace

std::unique_ptr<Folder_Lock> Lock_Folder(const std::wstring& path) {
  return std::make_unique<Windows_Folder_Lock>(path);
}

}  // namespace rivelt
