#include "platform/windows/paths.h"

#include "platform/windows/win32.h"

namespace rivelt {
namespace {

constexpr std::wstring_view Long_Prefix = L"\\\\?\\";
constexpr std::wstring_view Device_Prefix = L"\\\\.\\";
constexpr std::wstring_view Share_Prefix = L"\\\\";

std::wstring Absolute(const std::wstring& path) {
  std::wstring full(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    Require(length != 0);
    const bool fits = length < full.size();
    full.resize(length);
    if (fits) return full;
  }
}

// Nothing stands under the path; other errors say that it cannot be told.
bool Says_That_Nothing_Is_There(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_BAD_PATHNAME:
    case ERROR_DIRECTORY:
    case ERROR_INVALID_DRIVE:
      return true;
    default:
      return false;
  }
}

Path_State Nothing_There() {
  Require(Says_That_Nothing_Is_There(GetLastError()));
  return {};
}

}  // namespace

std::wstring Full_Path(Text_View path) {
  if (path.find(u'\0') != Text_View::npos) throw Failure();
  std::wstring full = Absolute(To_Wide(path));
  if (full.starts_with(Device_Prefix)) throw Failure();
  if (full.starts_with(Long_Prefix)) return full;
  if (full.starts_with(Share_Prefix)) return L"\\\\?\\UNC\\" + full.substr(Share_Prefix.size());
  return full.insert(0, Long_Prefix);
}

std::wstring Path_In(const std::wstring& folder, const std::wstring& name) {
  return folder.ends_with(L'\\') ? folder + name : folder + L'\\' + name;
}

std::wstring As_On_Disk(std::wstring full_path) {
  full_path.resize(full_path.find_last_not_of(L'\\') + 1);
  if (full_path.ends_with(L':')) return full_path + L'\\';  // the root of a volume
  WIN32_FIND_DATAW entry{};
  const HANDLE search = FindFirstFileW(full_path.c_str(), &entry);
  // A share is in no folder.
  if (search == INVALID_HANDLE_VALUE) return full_path;
  FindClose(search);
  return full_path.replace(full_path.rfind(L'\\') + 1, std::wstring::npos, entry.cFileName);
}

Text Last_Name(const std::wstring& full_path) {
  const std::size_t end = full_path.find_last_not_of(L'\\') + 1;
  const std::size_t separator = full_path.rfind(L'\\', end - 1);
  return From_Wide(std::wstring_view(full_path).substr(separator + 1, end - separator - 1));
}

Path_State State_Of(const std::wstring& full_path) {
  DWORD attributes = GetFileAttributesW(full_path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return Nothing_There();
  if (attributes & FILE_ATTRIBUTE_REPARSE_POINT) {
    // The attributes are those of the link. Opening the path without asking for any access goes
    // through to what it leads to.
    const HANDLE handle = CreateFileW(full_path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return Nothing_There();
    const Owned_Handle target(handle);
    FILE_BASIC_INFO information{};
    Require(GetFileInformationByHandleEx(target.get(), FileBasicInfo, &information,
                                         sizeof information));
    attributes = information.FileAttributes;
  }
  return {true, (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
          (attributes & FILE_ATTRIBUTE_READONLY) != 0};
}

}  // namespace rivelt
