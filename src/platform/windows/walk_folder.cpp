#include "platform/windows/walk_folder.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include "platform/windows/paths.h"
#include "platform/windows/win32.h"
#include "text/letter_case.h"

namespace rivelt {
namespace {

bool Is_Wanted(const std::wstring& path, const WIN32_FIND_DATAW& entry, bool folder) {
  const std::wstring_view name = entry.cFileName;
  if (name == L"." || name == L"..") return false;
  if (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) {
    const Path_State state = State_Of(Path_In(path, entry.cFileName));
    return state.Exists && state.Is_Folder == folder;
  }
  return ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) == folder;
}

}  // namespace

std::vector<std::wstring> Names_In_Order(const std::wstring& path, bool folders) {
  struct Close_Find {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { FindClose(handle); }
  };
  std::vector<Name_Key> found;
  WIN32_FIND_DATAW entry{};
  const HANDLE handle = FindFirstFileExW(Path_In(path, L"*").c_str(), FindExInfoBasic, &entry,
                                         FindExSearchNameMatch, nullptr, 0);
  // The root of a volume has no entry "." and so can have none at all.
  if (handle == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_NOT_FOUND) return {};
  Require(handle != INVALID_HANDLE_VALUE);
  const std::unique_ptr<HANDLE, Close_Find> search(handle);
  do {
    if (Is_Wanted(path, entry, folders)) found.push_back(Key_Of(From_Wide(entry.cFileName)));
  } while (FindNextFileW(handle, &entry));
  Require(GetLastError() == ERROR_NO_MORE_FILES);
  std::ranges::sort(found);
  std::vector<std::wstring> names;
  names.reserve(found.size());
  for (const Name_Key& key : found) names.push_back(To_Wide(key.Name));
  return names;
}

}  // namespace rivelt
