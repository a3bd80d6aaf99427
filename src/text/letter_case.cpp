#include "text/letter_case.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace rivelt {
namespace {

// Every Step-th letter from First to Last folds to the one that is Distance after it.
struct Folding_Row {
  std::int32_t First;
  std::int32_t Last;
  std::int32_t Step;
  std::int32_t Distance;
};

constexpr Folding_Row Folding_Rows[] = {
#include "text/case_folding_table.inc"
};

std::int32_t Folded(std::int32_t letter) {
  if (letter < 0x80) return letter >= u'A' && letter <= u'Z' ? letter + 32 : letter;
  const auto* row = std::lower_bound(
      std::begin(Folding_Rows), std::end(Folding_Rows), letter,
      [](const Folding_Row& candidate, std::int32_t wanted) { return candidate.Last < wanted; });
  if (row == std::end(Folding_Rows) || letter < row->First) return letter;
  return (letter - row->First) % row->Step == 0 ? letter + row->Distance : letter;
}

constexpr bool Is_High_Surrogate(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool Is_Low_Surrogate(char16_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

// A letter outside the 16-bit range never folds into it, so a pair stays a pair.
void Fold_Pair(char16_t& high, char16_t& low) {
  const std::int32_t letter = Folded(0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00)) - 0x10000;
  high = static_cast<char16_t>(0xD800 + (letter >> 10));
  low = static_cast<char16_t>(0xDC00 + (letter & 0x3FF));
}

}  // namespace

Text Fold_Case(Text_View text) {
  Text folded(text);
  for (std::size_t i = 0; i < folded.size(); ++i) {
    if (Is_High_Surrogate(folded[i]) && i + 1 < folded.size() && Is_Low_Surrogate(folded[i + 1])) {
      Fold_Pair(folded[i], folded[i + 1]);
      ++i;
    } else {
      folded[i] = static_cast<char16_t>(Folded(folded[i]));
    }
  }
  return folded;
}

Name_Key Key_Of(Text_View name) {
  return {Fold_Case(name), Text(name)};
}

}  // namespace rivelt
