#include "platform/windows/file_actions.h"

#include <exception>
#include <vector>

#include "platform/windows/staged_file.h"

namespace rivelt {
namespace {

void Copy_Content(HANDLE from, Staged_File& copy) {
  std::vector<char> piece(std::size_t{1} << 20);
  for (;;) {
    DWORD read = 0;
    Require(ReadFile(from, piece.data(), static_cast<DWORD>(piece.size()), &read, nullptr));
    if (read == 0) return;
    copy.Write(piece.data(), read);
  }
}

void Move_To_Other_Volume(const std::wstring& source, const std::wstring& target) {
  const DWORD attributes = GetFileAttributesW(source.c_str());
  Copy_File(source, target);
  try {
    Delete_File(source, true);
  } catch (const std::exception&) {
    Delete_File(target, true);
    throw;
  }
  SetFileAttributesW(target.c_str(), attributes);
}

}  // namespace

Owned_Handle Open_For_Reading(const std::wstring& path) {
  const HANDLE handle = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
  Require(handle != INVALID_HANDLE_VALUE);
  return Owned_Handle(handle);
}

void Delete_File(const std::wstring& path, bool force) {
  if (DeleteFileW(path.c_str())) return;
  const DWORD attributes = GetFileAttributesW(path.c_str());
  Require(attributes != INVALID_FILE_ATTRIBUTES);
  Require(force && (attributes & FILE_ATTRIBUTE_READONLY));
  Require(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL));
  if (DeleteFileW(path.c_str())) return;
  SetFileAttributesW(path.c_str(), attributes);
  throw Failure();
}

void Move_File(const std::wstring& source, const std::wstring& target) {
  if (MoveFileExW(source.c_str(), target.c_str(), 0)) return;
  Require(GetLastError() == ERROR_NOT_SAME_DEVICE);
  Move_To_Other_Volume(source, target);
}

void Copy_File(const std::wstring& source, const std::wstring& target) {
  const Owned_Handle from = Open_For_Reading(source);
  Staged_File copy(target);
  Copy_Content(from.get(), copy);
  copy.Copy_Times(from.get());
  copy.Take_Place(false);
}

void Keep_File(const std::wstring& source, const std::wstring& target) {
  // Not every file system has files of several names.
  if (!CreateHardLinkW(target.c_str(), source.c_str(), nullptr)) Copy_File(source, target);
}

}  // namespace rivelt
