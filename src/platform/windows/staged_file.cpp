#include "platform/windows/staged_file.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/windows/paths.h"
#include "system/file_service.h"

namespace rivelt {
namespace {

Owned_Handle Create_Beside(const std::wstring& target, std::wstring& path) {
  constexpr int attempts = 100;
  for (int attempt = 0; attempt < attempts; ++attempt) {
    path = Temporary_Beside(target, attempt);
    const HANDLE handle = CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle != INVALID_HANDLE_VALUE) return Owned_Handle(handle);
    if (GetLastError() != ERROR_FILE_EXISTS) break;
  }
  throw Failure();
}

}  // namespace

std::wstring Temporary_Beside(const std::wstring& path, int attempt) {
  return Path_In(path.substr(0, path.rfind(L'\\')),
                 To_Wide(Temporary_Prefix) + std::to_wstring(GetCurrentProcessId()) + L"-" +
                     std::to_wstring(GetTickCount64()) + L"-" + std::to_wstring(attempt) + L".tmp");
}

Staged_File::Staged_File(std::wstring target)
    : Target(std::move(target)), Handle(Create_Beside(Target, Temporary_Path)) {
  Is_Marked = Mark_For_Deletion(true);
}

Staged_File::~Staged_File() {
  if (Is_In_Place) return;
  Mark_For_Deletion(true);
  Handle.reset();
  // Not every system keeps to the mark once a rename has failed.
  DeleteFileW(Temporary_Path.c_str());
}

void Staged_File::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    constexpr std::size_t most = std::size_t{1} << 26;
    const auto size = static_cast<DWORD>(std::min(bytes.size(), most));
    DWORD written = 0;
    Require(WriteFile(Handle.get(), bytes.data(), size, &written, nullptr));
    Require(written > 0);
    bytes.remove_prefix(written);
  }
}

void Staged_File::Copy_Times(HANDLE from) {
  FILETIME created{};
  FILETIME accessed{};
  FILETIME written{};
  Require(GetFileTime(from, &created, &accessed, &written));
  Require(SetFileTime(Handle.get(), &created, &accessed, &written));
}

void Staged_File::Take_Place(bool replace) {
  const std::size_t name_size = Target.size() * sizeof(wchar_t);
  std::vector<std::byte> buffer(sizeof(FILE_RENAME_INFO) + name_size);
  auto& rename = *reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
  rename.ReplaceIfExists = static_cast<BOOLEAN>(replace);
  rename.FileNameLength = static_cast<DWORD>(name_size);
  std::memcpy(rename.FileName, Target.c_str(), name_size);
  // A file that is still marked would vanish from its place as soon as it is closed.
  if (Is_Marked) Require(Mark_For_Deletion(false));
  Require(SetFileInformationByHandle(Handle.get(), FileRenameInfo, buffer.data(),
                                     static_cast<DWORD>(buffer.size())));
  Is_In_Place = true;
  Handle.reset();
}

bool Staged_File::Mark_For_Deletion(bool deleted) {
  FILE_DISPOSITION_INFO disposition{static_cast<BOOLEAN>(deleted)};
  return SetFileInformationByHandle(Handle.get(), FileDispositionInfo, &disposition,
                                    sizeof disposition) != FALSE;
}

}  // namespace rivelt
