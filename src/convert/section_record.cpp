#include "convert/section_record.h"

#include "text/primitives.h"
#include "text/reasons.h"
#include "text/token_reader.h"

namespace rivelt {
namespace {

// Whether the digits of the field are those of one number: none after it, and no blank between two
// of them, which the reading passes over.
bool Has_One_Number(Text_View field, const Number_Reading& number) {
  if (Mid_Text(field, number.End + 1).find_first_of(u"0123456789") != Text_View::npos) return false;
  constexpr Text_View digits = u"0123456789ABCDEFabcdef";  // after a prefix
  const Text_View read = Left_Text(field, number.End);
  const std::size_t first = read.find_first_of(digits);
  if (first == Text_View::npos) return true;
  const std::size_t blank = read.find_first_of(Blanks, first);
  return blank == Text_View::npos || read.find_first_of(digits, blank) == Text_View::npos;
}

}  // namespace

Position Find_Section_Field(Text_View text, Position position) {
  return Find_After(u"SectionCurve", position, text, u")");
}

Section_Field Read_Section_Field(Text_View text, Position close) {
  // The search starts four units on because a section id has at least two digits.
  const Position end = Find_After(u"SectionCurve", close + 4, text, u" ");
  const Text_View field = Mid_Text(text, close + 1, end - close - 1);
  if (!Has_One_Number(field, Read_Number(field))) {
    throw Failure(u"more than one number after the \"SectionCurve\"", field.data());
  }
  return {Text_Value(field), field, end};
}

}  // namespace rivelt
