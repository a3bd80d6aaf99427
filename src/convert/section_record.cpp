#include "convert/section_record.h"

#include "text/primitives.h"
#include "text/token_reader.h"

namespace rivelt {

Double Only_Number(Text_View field) {
  const Text_View number = Without_Blanks(field);
  const Number_Reading reading = Read_Number(number);
  if (number.find_first_of(Blanks) != Text_View::npos || !reading.Has_Digits ||
      reading.End != static_cast<Position>(number.size())) {
    throw Failure();
  }
  return reading.Value;
}

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
