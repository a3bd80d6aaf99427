#include "platform/windows/files.h"
#include "platform/windows/win32.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

constexpr std::wstring_view Long_Prefix = L"\\\\?\\";
constexpr std::wstring_view Device_Prefix = L"\\\\.\\";
constexpr std::wstring_view Share_Prefix = L"\\\\";

// Empty if it is no path.
std::wstring Absolute(const std::wstring& path) {
  constexpr std::size_t longest = 32'768;
  std::wstring full(longest, L'\0');
  const DWORD length = GetFullPathNameW(path.c_str(), longest, full.data(), nullptr);
  full.resize(length < longest ? length : 0);
  return full;
}

}  // namespace

std::wstring Full_Path(Text_View path) {
  const bool has_zero = path.find(u'\0') != Text_View::npos;
  std::wstring full = has_zero ? std::wstring() : Absolute(To_Wide(path));
  if (full.empty() || full.starts_with(Device_Prefix))
    throw Failure(Concatenate({u"no path of a file: ", path}));
  if (full.starts_with(Long_Prefix)) return full;
  if (full.starts_with(Share_Prefix)) return L"\\\\?\\UNC\\" + full.substr(Share_Prefix.size());
  return full.insert(0, Long_Prefix);
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

}  // namespace rivelt
