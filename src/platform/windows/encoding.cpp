#include "platform/windows/encoding.h"

#include <algorithm>
#include <bit>
#include <limits>

#include "platform/windows/win32.h"

namespace rivelt {
namespace {

// Units are moved between memory and files as they lie in memory.
static_assert(std::endian::native == std::endian::little);

constexpr char16_t Mark = 0xFEFF;
constexpr char16_t Swapped_Mark = 0xFFFE;

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

void Decode_Utf16(Text& units, bool last_is_odd) {
  const bool swapped = units.starts_with(Swapped_Mark);
  if (swapped) {
    // The odd last byte has no partner to change places with.
    std::for_each(units.begin(), units.end() - last_is_odd,
                  [](char16_t& unit) { unit = static_cast<char16_t>(unit << 8 | unit >> 8); });
  }
  if (units.starts_with(Mark)) units.erase(0, 1);
}

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
