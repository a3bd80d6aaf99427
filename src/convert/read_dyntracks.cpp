#include "convert/read_dyntracks.h"

#include <cstddef>

#include "convert/section_record.h"
#include "text/primitives.h"
#include "text/reasons.h"
#include "text/token_reader.h"

namespace rivelt {
namespace {

constexpr Text_View Keyword = u"Dyntrack";
constexpr int Sections_Of_A_Track = 5;

using Take = std::function<void(const Dyntrack_Number&)>;

// The blank after a number field that is a single digit between blanks, else 0. Editors leave such
// fields in a broken track. No section of a route's own has so low a number.
Position End_Of_Single_Digit(Text_View text, Position close) {
  const Text_View field = Mid_Text(text, close + 1);
  const std::size_t digit = field.find_first_not_of(u' ');
  if (digit == 0 || digit == Text_View::npos || digit + 1 == field.size()) return 0;
  if (field[digit] < u'0' || field[digit] > u'9' || field[digit + 1] != u' ') return 0;
  return close + static_cast<Position>(digit) + 2;
}

// Reads the dynamic track whose keyword is at start, and gives the ")" of its shape reference.
Position Read_Dyntrack(Text_View text, Position start, const Take& take) {
  const Text_View keyword = Mid_Text(text, start, static_cast<Position>(Keyword.size()));
  bool is_broken = false;  // it has a field of a single digit
  Position position = start;
  for (int i = 0; i < Sections_Of_A_Track; ++i) {
    position = Find_After(keyword, position, text, u"SectionCurve");
    const Position close = Find_Section_Field(text, position);
    position = End_Of_Single_Digit(text, close);
    if (position != 0) {
      is_broken = true;
      continue;
    }
    const Section_Field field = Read_Section_Field(text, close);
    take({Dyntrack_Number::Kind::Section, field.Id, field.Units});
    position = field.End;
  }
  position = Find_After(keyword, position, text, u"SectionIdx");
  const Position open = Find_After(u"SectionIdx", position, text, u"(");
  const Position close = Find_After(u"SectionIdx", open, text, u")");
  const Text_View field = Mid_Text(text, open + 1, close - open - 1);
  const Double id = Text_Value(field);
  if (!is_broken || id >= 0) take({Dyntrack_Number::Kind::Shape, id, field});
  return close;
}

// A track that lacks something has taken it from the next one. A keyword opens a record if its word
// is followed by a "("; it can also be in a comment or a name.
void Require_One_Record(Text_View text, Position start, Position end) {
  const Text_View track = Left_Text(text, end);
  bool has_record = false;
  for (Position hit = start; hit != 0;) {
    const std::size_t word_end =
        text.find_first_of(u" \t\r\n()\"", static_cast<std::size_t>(hit) - 1);
    const std::size_t next = text.find_first_not_of(Blanks, word_end);
    if (next == Text_View::npos) return;
    const bool opens_record = text[next] == u'(';
    if (opens_record && has_record) {
      throw Failure(u"a \"Dyntrack\" before the end of the \"Dyntrack\"",
                    Mid_Text(text, hit).data(), Mid_Text(text, start).data());
    }
    has_record = has_record || opens_record;
    // All keywords of a word are alike.
    hit = Find_Text(opens_record ? hit + 1 : static_cast<Position>(word_end), track, Keyword);
  }
}

}  // namespace

Long Read_Dyntracks(Text_View text, const Take& take) {
  return Naming_Lines(text, [&] {
    Long count = 0;
    for (Position start = Find_Text(1, text, Keyword); start != 0;) {
      ++count;
      const Position end = Read_Dyntrack(text, start, take);
      Require_One_Record(text, start, end);
      start = Find_Text(end, text, Keyword);
    }
    return count;
  });
}

}  // namespace rivelt
