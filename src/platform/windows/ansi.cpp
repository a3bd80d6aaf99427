#include "platform/windows/ansi.h"

#include <algorithm>
#include <limits>

#include "platform/windows/win32.h"

namespace rivelt {
namespace {

constexpr bool Is_High_Surrogate(wchar_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

// The counts of the conversions are of type int.
int Counted(std::size_t size) {
  if (size > static_cast<std::size_t>(std::numeric_limits<int>::max())) throw Failure();
  return static_cast<int>(size);
}

// No code page but UTF-8 has a character beyond the first 65,536, and without this each half of
// such a character would become a "?" of its own.
void Drop_Second_Halves(std::wstring& wide) {
  const auto second_half = [&, before = L'\0'](wchar_t unit) mutable {
    const bool drop = Is_High_Surrogate(before) && unit >= 0xDC00 && unit < 0xE000;
    before = unit;
    return drop;
  };
  wide.erase(std::remove_if(wide.begin(), wide.end(), second_half), wide.end());
}

}  // namespace

std::string To_Ansi(Text_View text) {
  if (text.empty()) return {};
  std::wstring wide = To_Wide(text);
  // The conversion to UTF-8 refuses the arguments about lacking characters: it lacks none.
  const bool lacks_none = GetACP() == CP_UTF8;
  if (!lacks_none) Drop_Second_Halves(wide);
  const int size = Counted(wide.size());
  const auto convert = [&](char* bytes, int room) {
    return WideCharToMultiByte(CP_ACP, lacks_none ? 0 : WC_NO_BEST_FIT_CHARS, wide.data(), size,
                               bytes, room, lacks_none ? nullptr : "?", nullptr);
  };
  const int needed = convert(nullptr, 0);
  Require(needed > 0);
  std::string bytes(static_cast<std::size_t>(needed), '\0');
  Require(convert(bytes.data(), needed) == needed);
  return bytes;
}

Text From_Ansi(std::string_view bytes) {
  if (bytes.empty()) return {};
  const int size = Counted(bytes.size());
  const int needed = MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0);
  Require(needed > 0);
  std::wstring wide(static_cast<std::size_t>(needed), L'\0');
  Require(MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, wide.data(), needed) == needed);
  return From_Wide(wide);
}

}  // namespace rivelt
