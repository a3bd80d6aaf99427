#include "convert/read_dyntracks.h"

#include <cstddef>
#include <limits>

#include "convert/section_record.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

constexpr Text_View Keyword = u"Dyntrack";
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

class Dyntrack_Reader {
 public:
  using Take = std::function<void(const Dyntrack_Number&)>;

  Dyntrack_Reader(Text_View text, const Take& take) : Rest(text), Take_Number(take) {}

  Long Run() {
    Long count = 0;
    Position track = Find_Text(1, Rest, Keyword);
    while (track > 0) {
      ++count;
      track = Read_Track(track);
    }
    return count;
  }

 private:
  // Reads the dynamic track whose keyword is at track and gives the place of the next one.
  Position Read_Track(Position track) {
    Skip(track + static_cast<Position>(Keyword.size()) - 1);
    const Position next = Find_Text(1, Rest, Keyword);
    Units_To_Next = next == 0 ? std::numeric_limits<Position>::max() : next;
    Is_Broken = false;
    for (int i = 0; i < Sections_Of_A_Track; ++i) Read_Section();
    Read_Shape_Reference();
    return next == 0 ? 0 : Units_To_Next;
  }

  void Read_Section() {
    const Position close = Find_Section_Field(Rest, Find_Text(1, Rest, u"SectionCurve"));
    if (const Position end = End_Of_Single_Digit(Rest, close)) {
      Require_In_Track(end);
      Is_Broken = true;
      return Skip(end);
    }
    const Section_Field field = Read_Section_Field(Rest, close);
    Require_In_Track(field.End);
    Take_Number({Dyntrack_Number::Kind::Section, field.Id,
                 Mid_Text(Rest, close + 1, field.End - close - 1)});
    Skip(field.End - 1);
  }

  void Read_Shape_Reference() {
    Position position = Find_Text(1, Rest, u"SectionIdx");
    position = Find_Text(position, Rest, u"(");
    const Position close = Find_Text(position, Rest, u")");
    const Double id = Text_Value(Mid_Text(Rest, position + 1, close - position));
    Require_In_Track(close);
    if (Is_Broken && id < 0) return Skip(close);
    Take_Number(
        {Dyntrack_Number::Kind::Shape, id, Mid_Text(Rest, position + 1, close - position - 1)});
    Skip(close - 1);
  }

  // What is taken from after the next "Dyntrack" would be that track's own.
  void Require_In_Track(Position position) const {
    if (position >= Units_To_Next) throw Failure();
  }

  // Leaves the first count units of the rest behind.
  void Skip(Position count) {
    Rest = Mid_Text(Rest, count + 1);
    if (Units_To_Next != std::numeric_limits<Position>::max()) Units_To_Next -= count;
  }

  Text_View Rest;
  const Take& Take_Number;
  bool Is_Broken = false;  // whether the track has had a field of a single digit
  Position Units_To_Next = std::numeric_limits<Position>::max();  // of the next keyword in the rest
};

}  // namespace

Long Read_Dyntracks(Text_View text, const std::function<void(const Dyntrack_Number&)>& take) {
  return Dyntrack_Reader(text, take).Run();
}

}  // namespace rivelt
