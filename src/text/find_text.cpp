#include <algorithm>
#include <cstddef>

#include "text/primitives.h"

namespace rivelt {
namespace {

constexpr bool Is_Ascii_Letter(char16_t unit) {
  const char16_t lower = unit | 0x20;
  return lower >= u'a' && lower <= u'z';
}

// One unit of a target, in the form in which a text is compared with it: (unit | Case_Bit) == Unit.
struct Pattern_Unit {
  explicit Pattern_Unit(char16_t unit)
      : Case_Bit(Is_Ascii_Letter(unit) ? 0x20 : 0), Unit(unit | Case_Bit) {}

  bool Matches(char16_t unit) const { return static_cast<char16_t>(unit | Case_Bit) == Unit; }

  char16_t Case_Bit;
  char16_t Unit;
};

constexpr std::size_t Block = 64;

// Whether first is somewhere in the block at `at` and last `distance` units after it. No branch
// depends on the text, so that the compiler compares many units at a time.
bool Block_May_Match(const char16_t* at, std::size_t distance, Pattern_Unit first,
                     Pattern_Unit last) {
  char16_t hits = 0;
  for (std::size_t i = 0; i < Block; ++i) {
    const char16_t misses = static_cast<char16_t>(((at[i] | first.Case_Bit) ^ first.Unit) |
                                                  ((at[i + distance] | last.Case_Bit) ^ last.Unit));
    hits |= misses == 0 ? 1 : 0;
  }
  return hits != 0;
}

bool Matches_At(const char16_t* at, Text_View target) {
  return std::equal(target.begin(), target.end(), at, [](char16_t wanted, char16_t unit) {
    return Pattern_Unit(wanted).Matches(unit);
  });
}

}  // namespace

Position Find_Text(Position start, Text_View text, Text_View target) {
  if (start < 1) throw Failure(u"no place to search from", text.data());
  if (target.size() > text.size()) return 0;
  const std::size_t distance = target.size() - 1;
  const Pattern_Unit first(target.front());
  const Pattern_Unit last(target.back());
  const std::size_t end = text.size() - distance;
  for (std::size_t i = static_cast<std::size_t>(start) - 1; i < end;) {
    const std::size_t block_end = std::min(i + Block, end);
    if (block_end - i == Block && !Block_May_Match(text.data() + i, distance, first, last)) {
      i = block_end;
      continue;
    }
    for (; i < block_end; ++i) {
      if (first.Matches(text[i]) && Matches_At(text.data() + i, target)) {
        return static_cast<Position>(i + 1);
      }
    }
  }
  return 0;
}

}  // namespace rivelt
