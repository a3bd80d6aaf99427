#include "text/primitives.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace rivelt {

Text_View Left_Text(Text_View text, Position count) {
  return Mid_Text(text, 1, count);
}

Text_View Mid_Text(Text_View text, Position start, Position count) {
  if (count < 0) throw Failure(u"what begins here has no end", text.data());
  return Mid_Text(text, start).substr(0, static_cast<std::size_t>(count));
}

Text_View Mid_Text(Text_View text, Position start) {
  if (start < 1) throw Failure(u"no place to read from", text.data());
  return text.substr(std::min(static_cast<std::size_t>(start) - 1, text.size()));
}

Text_View Right_Text(Text_View text, Position count) {
  if (count < 0) throw Failure(u"what ends here has no beginning", text.data());
  return text.substr(text.size() - std::min(static_cast<std::size_t>(count), text.size()));
}

Text_View Trim_Text(Text_View text) {
  const std::size_t first = text.find_first_not_of(u' ');
  if (first == Text_View::npos) return {};
  return text.substr(first, text.find_last_not_of(u' ') + 1 - first);
}

Text Upper_Text(Text_View text) {
  Text upper(text);
  for (char16_t& unit : upper) {
    if (unit >= u'a' && unit <= u'z') unit = static_cast<char16_t>(unit - u'a' + u'A');
  }
  return upper;
}

Text Replace_Text(Text_View text, Text_View target, Text_View replacement) {
  Text replaced;
  while (true) {
    const std::size_t hit = text.find(target);
    replaced += text.substr(0, hit);
    if (hit == Text_View::npos) return replaced;
    replaced += replacement;
    text.remove_prefix(hit + target.size());
  }
}

std::vector<Text_View> Split_Text(Text_View text) {
  std::vector<Text_View> elements;
  if (text.empty()) return elements;
  while (true) {
    const std::size_t blank = text.find(u' ');
    elements.push_back(text.substr(0, blank));
    if (blank == Text_View::npos) return elements;
    text.remove_prefix(blank + 1);
  }
}

Text Join_Text(const std::vector<Text>& elements) {
  Text joined;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    if (i > 0) joined += u' ';
    joined += elements[i];
  }
  return joined;
}

Double Text_Value(Text_View text) {
  const Double value = Read_Number(text).Value;
  if (std::isinf(value)) throw Failure(u"a number is too large", text.data());
  return value;
}

Long Round_Long(Double number, const char16_t* place) {
  const Double rounded = std::nearbyint(number);
  if (!(rounded >= std::numeric_limits<Long>::min() &&
        rounded <= std::numeric_limits<Long>::max())) {
    throw Failure(Concatenate({Trim_Text(Number_Text(number)), u" is out of range"}), place);
  }
  return static_cast<Long>(rounded);
}

Text Concatenate(std::initializer_list<Text_View> parts) {
  std::size_t length = 0;
  for (const Text_View part : parts) length += part.size();
  Text whole;
  whole.reserve(length);
  for (const Text_View part : parts) whole += part;
  return whole;
}

}  // namespace rivelt
