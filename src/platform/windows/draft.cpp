#include <algorithm>
#include <cstring>
#include <vector>

#include "platform/windows/files.h"

namespace rivelt {
namespace {

// Has one of our names until it is complete, and is marked for deletion meanwhile, so that the
// system removes it with its last handle, also when the process is ended from outside. What can be
// left over: an empty file, if the process ends in the instant between making the file and marking
// it; the complete one, between taking the mark off and renaming it; and what was written, on a
// volume that knows no such mark.
class Windows_Draft : public Draft {
 public:
  Windows_Draft(const File_Verbs& verbs, const Text& path)
      : Verbs(verbs), Path(path), Temporary(To_Wide(verbs.Temporary_Beside(path))) {
    const HANDLE handle = CreateFileW(Temporary.c_str(), GENERIC_WRITE | DELETE, 0, nullptr,
                                      CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) throw Refused();
    Handle.reset(handle);
    Mark_For_Deletion(true);
  }
  Windows_Draft(const Windows_Draft&) = delete;
  Windows_Draft& operator=(const Windows_Draft&) = delete;
  ~Windows_Draft() override {
    if (Is_In_Place) return;
    Handle.reset();
    // Not every system keeps to the mark once a rename has failed.
    DeleteFileW(Temporary.c_str());
  }

  void Write(std::string_view bytes) override {
    while (!bytes.empty()) {
      constexpr std::size_t most = std::size_t{1} << 26;
      const auto size = static_cast<DWORD>(std::min(bytes.size(), most));
      DWORD written = 0;
      if (!WriteFile(Handle.get(), bytes.data(), size, &written, nullptr) || written == 0)
        throw Refused();
      bytes.remove_prefix(written);
    }
  }

  void Take_After(const Text& path, bool with_times) override {
    const HANDLE handle = CreateFileW(To_Wide(path).c_str(), FILE_READ_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return;
    const Owned_Handle model(handle);
    FILE_BASIC_INFO found{};
    if (!GetFileInformationByHandleEx(model.get(), FileBasicInfo, &found, sizeof found)) return;
    constexpr DWORD settable = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                               FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    Mode.FileAttributes = found.FileAttributes & settable;
    if (!with_times) return;
    Mode.CreationTime = found.CreationTime;
    Mode.LastWriteTime = found.LastWriteTime;
  }

  void Flush() override {
    if (!FlushFileBuffers(Handle.get()) && Says_Lost(GetLastError())) throw Refused();
  }

  bool Take_Name(bool replace) override {
    // A read-only file could not be flushed later.
    if (Mode.FileAttributes & FILE_ATTRIBUTE_READONLY) Flush();
    // A file that is still marked would vanish from its place as soon as it is closed.
    if (Is_Marked && !Mark_For_Deletion(false)) throw Refused();
    if (!Patiently([&] { return Rename(replace); })) {
      if (!replace && GetLastError() == ERROR_ALREADY_EXISTS) return false;
      throw Refused();
    }
    SetFileInformationByHandle(Handle.get(), FileBasicInfo, &Mode, sizeof Mode);
    Is_In_Place = true;
    Handle.reset();
    return true;
  }

 private:
  Failure Refused() const { return Refused_By_System(Verbs, Path); }

  bool Rename(bool replace) const {
    const std::size_t name_size = Path.size() * sizeof(wchar_t);
    std::vector<std::byte> buffer(sizeof(FILE_RENAME_INFO) + name_size);
    auto& rename = *reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
    rename.ReplaceIfExists = static_cast<BOOLEAN>(replace);
    rename.FileNameLength = static_cast<DWORD>(name_size);
    std::memcpy(rename.FileName, Path.data(), name_size);
    return SetFileInformationByHandle(Handle.get(), FileRenameInfo, buffer.data(),
                                      static_cast<DWORD>(buffer.size())) != FALSE;
  }

  bool Mark_For_Deletion(bool deleted) {
    FILE_DISPOSITION_INFO disposition{static_cast<BOOLEAN>(deleted)};
    const bool done = SetFileInformationByHandle(Handle.get(), FileDispositionInfo, &disposition,
                                                 sizeof disposition) != FALSE;
    Is_Marked = done && deleted;
    return done;
  }

  const File_Verbs& Verbs;
  Text Path;
  std::wstring Temporary;
  Owned_Handle Handle;
  FILE_BASIC_INFO Mode{};  // to be set; what is 0 stays as it is
  bool Is_Marked = false;
  bool Is_In_Place = false;
};

}  // namespace

std::unique_ptr<Draft> Make_Draft(const File_Verbs& verbs, const Text& path) {
  return std::make_unique<Windows_Draft>(verbs, path);
}

}  // namespace rivelt
