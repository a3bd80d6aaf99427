#include "platform/windows/files.h"
#include "platform/windows/win32.h"
#include "text/primitives.h"

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

}  // namespace

std::wstring Full_Path(Text_View path) {
  const bool is_text = !path.empty() && path.find(u'\0') == Text_View::npos;
  std::wstring full = is_text ? Absolute(To_Wide(path)) : std::wstring(Device_Prefix);
  if (full.starts_with(Device_Prefix)) throw Failure(Concatenate({u"no path of a file: ", path}));
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
