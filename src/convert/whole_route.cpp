#include "convert/whole_route.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "convert/track_database.h"
#include "convert/track_object.h"
#include "text/forward_search.h"
#include "text/primitives.h"
#include "text/rewritten_text.h"
#include "text/token_reader.h"

namespace rivelt {
namespace {

// A text in which numbers are written anew: in place as long as none gets shorter or longer.
class Renumbered_Text {
 public:
  explicit Renumbered_Text(Text text) : Source(std::move(text)) {}

  Text_View View() const { return Source; }

  // The number is a view into the text, and comes after the numbers replaced so far.
  void Replace(Text_View number, Double id, Long delta) {
    const Text moved(Trim_Text(Number_Text(id + delta)));
    if (!Copy && moved.size() == number.size()) {
      std::ranges::copy(moved, Source.begin() + (number.data() - Source.data()));
      return;
    }
    if (!Copy) Copy.emplace(Source);
    Copy->Replace(number, moved);
  }

  Text Finish() { return Copy ? Copy->Finish() : std::move(Source); }

 private:
  Text Source;
  std::optional<Rewritten_Text> Copy;
};

// Most files have no own shape after any "SectionIdx", and need no closer look.
bool May_Have_Own_Shapes(Text_View text, const Number_Set& own) {
  Forward_Search opens(text, u"(");
  Position last_open = 0;
  Position position = Find_Text(1, text, u"SectionIdx");
  for (; position != 0; position = Find_Text(position + 1, text, u"SectionIdx")) {
    const Position found = opens.Find(Mid_Text(text, position));
    if (found == 0) return false;
    const Position open = position + found - 1;
    // Several keywords can share a "(", and the blanks after it are read once only.
    if (open != last_open && own.Has(Text_Value(Mid_Text(text, open + 1)))) return true;
    last_open = open;
  }
  return false;
}

// Hands over the units of the number of each track object that is one of the route's own shapes.
template <class Take>
void Read_Own_Shapes(Text_View text, const Own_Numbers& own,
                     const std::function<Long(Text_View)>& shape_id, const Take& take) {
  if (!May_Have_Own_Shapes(text, own.Shapes)) return;
  Read_Track_Objects(text, [&](Text_View record, const Track_Object& object) {
    if (!own.Shapes.Has(object.Old_Id)) return;
    if (Is_Of_Catalogue(object.Old_Name, object.Old_Id, shape_id)) return;
    const Text_View field = Inside(record, object.Id);
    const Number_Reading number = Read_Number(field);
    // A field without a number reads as 0.
    if (number.Has_Digits) take(Without_Blanks(Left_Text(field, number.End)), number.Value);
  });
}

template <class Take>
void Read_Own_Numbers(Text_View text, const Own_Numbers& own, const Take& take) {
  Read_Track_Database(text, [&](const Database_Number& number) {
    const bool is_section = number.Of == Database_Number::Kind::Section;
    if ((is_section ? own.Sections : own.Shapes).Has(number.Value)) take(number, is_section);
  });
}

}  // namespace

Passed_World Rebase_Own_Shapes(Text text, const Own_Numbers& own, Long shape_delta,
                               const std::function<Long(Text_View)>& shape_id,
                               const Log_Line& log) {
  Renumbered_Text output(std::move(text));
  Long count = 0;
  Read_Own_Shapes(output.View(), own, shape_id, [&](Text_View number, Double id) {
    output.Replace(number, id, shape_delta);
    ++count;
  });
  if (count != 0) log(Number_Text(count) + u" track objects of the route's own shapes");
  return {output.Finish(), count};
}

Long Count_Own_Shapes(Text_View text, const Own_Numbers& own,
                      const std::function<Long(Text_View)>& shape_id) {
  Long count = 0;
  Read_Own_Shapes(text, own, shape_id, [&](Text_View, Double) { ++count; });
  return count;
}

Rebased_Database Rebase_Track_Database(Text text, const Own_Numbers& own, Long section_delta,
                                       Long shape_delta) {
  Renumbered_Text output(std::move(text));
  Rebased_Database rebased;
  Read_Own_Numbers(output.View(), own, [&](const Database_Number& number, bool is_section) {
    output.Replace(number.Field, number.Value, is_section ? section_delta : shape_delta);
    ++(is_section ? rebased.Section_Count : rebased.Shape_Count);
  });
  rebased.Output = output.Finish();
  return rebased;
}

Long Count_Own_Numbers(Text_View text, const Own_Numbers& own) {
  Long count = 0;
  Read_Own_Numbers(text, own, [&](const Database_Number&, bool) { ++count; });
  return count;
}

}  // namespace rivelt
