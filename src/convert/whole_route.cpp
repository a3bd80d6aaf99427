#include "convert/whole_route.h"

#include <vector>

#include "convert/track_database.h"
#include "text/forward_search.h"
#include "text/primitives.h"
#include "text/reasons.h"
#include "text/rewritten_text.h"
#include "text/token_reader.h"

namespace rivelt {
namespace {

// Most files have no such shape after any "SectionIdx", and need no closer look.
bool May_Concern(Text_View text, const Moving_Ids& shapes) {
  Forward_Search opens(text, u"(");
  Position last_open = 0;
  Position position = Find_Text(1, text, u"SectionIdx");
  for (; position != 0; position = Find_Text(position + 1, text, u"SectionIdx")) {
    const Position found = opens.Find(Mid_Text(text, position));
    if (found == 0) return false;
    const Position open = position + found - 1;
    // Several keywords can share a "(", and the blanks after it are read once only.
    if (open != last_open) {
      const Double id = Text_Value(Mid_Text(text, open + 1));
      if (shapes.Own.Has(id) || shapes.Taken.Has(id)) return true;
    }
    last_open = open;
  }
  return false;
}

}  // namespace

Moving_Ids::Moving_Ids(const Number_Set& own, const Number_Set& of_catalogue, Long delta) {
  if (delta == 0) return;
  Delta = delta;
  Own = own;
  std::vector<Double> taken;
  for (const Long id : own.In_Order()) {
    const Double moved = static_cast<Double>(id) + delta;
    if (!own.Has(moved) && !of_catalogue.Has(moved)) taken.push_back(moved);
  }
  Taken = Number_Set(taken);
}

Renumbered_File Rebase_Own_Shapes(Text_View text, const Moving_Ids& shapes,
                                  const Id_Of_Shape& shape_id, Purpose purpose) {
  Rewritten_Text output(text);
  Renumbered_File file;
  const auto move = [&](const Track_Object& object) {
    if (!object.Is_Readable) return;
    const Number_Reading number = Read_Number(object.Id);
    if (!number.Has_Digits) return;  // a field without a number reads as 0
    if (shapes.Taken.Has(number.Value)) ++file.Taken_Count;
    if (!shapes.Own.Has(number.Value)) return;
    if (Is_Of_Catalogue(object, shape_id)) {
      ++file.Shared_Count;
      return;
    }
    ++file.Shape_Count;
    if (purpose == Purpose::Count) return;
    output.Replace(Without_Blanks(Left_Text(object.Id, number.End)),
                   Trim_Text(Number_Text(number.Value + shapes.Delta)));
  };
  Naming_Lines(text, [&] {
    if (May_Concern(text, shapes)) Read_Track_Objects(text, move);
  });
  file.Output = output.Finish();
  return file;
}

Renumbered_File Rebase_Track_Database(Text_View text, const Moving_Ids& sections,
                                      const Moving_Ids& shapes, Purpose purpose) {
  Rewritten_Text output(text);
  Renumbered_File file;
  Read_Track_Database(text, [&](const Database_Number& number) {
    const bool is_section = number.Of == Database_Number::Kind::Section;
    const Moving_Ids& ids = is_section ? sections : shapes;
    if (ids.Taken.Has(number.Value)) ++file.Taken_Count;
    if (!ids.Own.Has(number.Value)) return;
    ++(is_section ? file.Section_Count : file.Shape_Count);
    if (purpose == Purpose::Count) return;
    output.Replace(number.Field, Trim_Text(Number_Text(number.Value + ids.Delta)));
  });
  file.Output = output.Finish();
  return file;
}

}  // namespace rivelt
