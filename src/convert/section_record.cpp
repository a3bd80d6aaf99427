#include "convert/section_record.h"

#include "text/primitives.h"

namespace rivelt {
namespace {

constexpr Text_View Blanks = u" \t\r\n";

// The one number of a field. Two numbers would be read as one.
Double Only_Number(Text_View field) {
  const std::size_t first = field.find_first_not_of(Blanks);
  if (first == Text_View::npos) throw Failure();
  const std::size_t last = field.find_last_not_of(Blanks);
  const Text_View number = field.substr(first, last + 1 - first);
  const Number_Reading reading = Read_Number(number);
  if (number.find_first_of(Blanks) != Text_View::npos || !reading.Has_Digits ||
      reading.End != static_cast<Position>(number.size())) {
    throw Failure();
  }
  return reading.Value;
}

}  // namespace

Position Find_Section_Field(Text_View rest, Position position) {
  const Position close = Find_Text(position, rest, u")");
  if (close == 0) throw Failure();
  return close;
}

Section_Field Read_Section_Field(Text_View rest, Position close) {
  // The search starts four units on because a section id has at least two digits.
  const Position end = Find_Text(close + 4, rest, u" ");
  return {Only_Number(Mid_Text(rest, close + 1, end - close)), end};
}

}  // namespace rivelt
