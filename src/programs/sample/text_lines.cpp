#include "programs/sample/text_lines.h"

#include <algorithm>

namespace rivelt::sample {

Text_Lines::Text_Lines(Text_View kind) {
  Line(0, {u"SIMISA@@@@@@@@@@JINX0", kind, u"______"});
  Line(0, {});
}

void Text_Lines::Line(std::size_t depth, std::initializer_list<Text_View> parts) {
  Written.append(depth, u'\t');
  for (const Text_View part : parts) Written += part;
  Written += Line_End;
}

Text Whole_Number(std::int64_t number) {
  Text digits;
  std::int64_t left = number < 0 ? -number : number;
  do {
    digits += static_cast<char16_t>(u'0' + left % 10);
    left /= 10;
  } while (left > 0);
  if (number < 0) digits += u'-';
  std::reverse(digits.begin(), digits.end());
  return digits;
}

Text Decimal(std::int64_t units, int digits) {
  std::int64_t one = 1;
  for (int i = 0; i < digits; ++i) one *= 10;
  const std::int64_t size = units < 0 ? -units : units;
  Text decimal = units < 0 ? u"-" : u"";
  decimal += Whole_Number(size / one);
  if (size % one == 0) return decimal;
  decimal += u'.';
  decimal += Filled_Number(size % one, static_cast<std::size_t>(digits));
  decimal.resize(decimal.find_last_not_of(u'0') + 1);
  return decimal;
}

Text Filled_Number(std::int64_t number, std::size_t width) {
  const Text digits = Whole_Number(number);
  return Text(width - std::min(width, digits.size()), u'0') + digits;
}

}  // namespace rivelt::sample
