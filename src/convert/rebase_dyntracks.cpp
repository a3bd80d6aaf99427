#include <cstddef>
#include <limits>

#include "convert/section_record.h"
#include "convert/world_passes.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

constexpr Text_View Keyword = u"Dyntrack";
constexpr Double Unused_Section = 4294967295.0;
constexpr int Sections_Of_A_Track = 5;

// The blank after a number field that is a single digit between blanks, else 0. Editors leave such
// fields in a broken track. No section of a route's own has so low a number.
Position End_Of_Single_Digit(Text_View rest, Position close) {
  const Text_View field = Mid_Text(rest, close + 1);
  const std::size_t digit = field.find_first_not_of(u' ');
  if (digit == 0 || digit == Text_View::npos || digit + 1 == field.size()) return 0;
  if (field[digit] < u'0' || field[digit] > u'9' || field[digit + 1] != u' ') return 0;
  return close + static_cast<Position>(digit) + 2;
}

class Dyntrack_Pass {
 public:
  Dyntrack_Pass(Text_View text, Long section_delta, Long shape_delta)
      : Rest(text), Section_Delta(section_delta), Shape_Delta(shape_delta) {
    Output.reserve(text.size() + text.size() / 16);
  }

  Passed_World Run(const Log_Line& log) {
    Long count = 0;
    Position track = Find_Text(1, Rest, Keyword);
    while (track > 0) {
      ++count;
      track = Rebase_Track(track);
    }
    log(Number_Text(count) + u" dynamic tracks");
    Output += Rest;
    return {std::move(Output), count};
  }

 private:
  // Handles the dynamic track whose keyword is at track and gives the place of the next one.
  Position Rebase_Track(Position track) {
    Cut(track + static_cast<Position>(Keyword.size()) - 1);
    const Position next = Find_Text(1, Rest, Keyword);
    Units_To_Next = next == 0 ? std::numeric_limits<Position>::max() : next;
    Is_Broken = false;
    for (int i = 0; i < Sections_Of_A_Track; ++i) Rebase_Section();
    Rebase_Shape_Reference();
    return next == 0 ? 0 : Units_To_Next;
  }

  void Rebase_Section() {
    const Position close = Find_Section_Field(Rest, Find_Text(1, Rest, u"SectionCurve"));
    if (const Position end = End_Of_Single_Digit(Rest, close)) {
      Require_In_Track(end);
      Is_Broken = true;
      return Cut(end);
    }
    const Section_Field field = Read_Section_Field(Rest, close);
    Require_In_Track(field.End);
    const bool moves = field.Id != Unused_Section;
    Cut(close);
    Output += Number_Text(moves ? field.Id + Section_Delta : field.Id);
    Skip(field.End - close - 1);
  }

  void Rebase_Shape_Reference() {
    Position position = Find_Text(1, Rest, u"SectionIdx");
    position = Find_Text(position, Rest, u"(");
    const Position close = Find_Text(position, Rest, u")");
    const Double id = Text_Value(Mid_Text(Rest, position + 1, close - position));
    Require_In_Track(close);
    if (Is_Broken && id < 0) return Cut(close);
    Cut(position);
    Output += Number_Text(id + Shape_Delta);
    Output += u' ';
    Skip(close - position - 1);
  }

  // What is taken from after the next "Dyntrack" would be that track's own.
  void Require_In_Track(Position position) const {
    if (position >= Units_To_Next) throw Failure();
  }

  // Carries over the first count units of the rest.
  void Cut(Position count) {
    Output += Left_Text(Rest, count);
    Skip(count);
  }

  // Leaves out the first count units of the rest.
  void Skip(Position count) {
    Rest = Mid_Text(Rest, count + 1);
    if (Units_To_Next != std::numeric_limits<Position>::max()) Units_To_Next -= count;
  }

  Text_View Rest;
  Text Output;
  Long Section_Delta;
  Long Shape_Delta;
  bool Is_Broken = false;  // whether the track has had a field of a single digit
  Position Units_To_Next = std::numeric_limits<Position>::max();  // of the next keyword in the rest
};

}  // namespace

Passed_World Rebase_Dyntracks(Text_View text, Long section_delta, Long shape_delta,
                              const Log_Line& log) {
  return Dyntrack_Pass(text, section_delta, shape_delta).Run(log);
}

}  // namespace rivelt
