#include "convert/whole_route.h"

#include "convert/track_database.h"
#include "convert/track_object.h"
#include "text/primitives.h"
#include "text/rewritten_text.h"
#include "text/token_reader.h"

namespace rivelt {
namespace {

// The units of the number at the start of a field.
Text_View Units_Of_Number(Text_View field) {
  return Without_Blanks(Left_Text(field, Read_Number(field).End));
}

Text Moved(Double number, Long delta) {
  return Text(Trim_Text(Number_Text(number + delta)));
}

}  // namespace

Passed_World Rebase_Own_Shapes(Text_View text, const Own_Numbers& own, Long shape_delta,
                               const std::function<Long(Text_View)>& shape_id,
                               const Log_Line& log) {
  Rewritten_Text output(text);
  Long count = 0;
  Read_Track_Objects(text, [&](Text_View record, const Track_Object& object) {
    if (!own.Shapes.Has(object.Old_Id)) return;
    if (Is_Of_Catalogue(object.Old_Name, object.Old_Id, shape_id)) return;
    const Text_View number = Units_Of_Number(Inside(record, object.Id));
    output.Replace(number, Moved(object.Old_Id, shape_delta));
    ++count;
  });
  if (count != 0) log(Number_Text(count) + u" track objects of the route's own shapes");
  return {output.Finish(), count};
}

Rebased_Database Rebase_Track_Database(Text_View text, const Own_Numbers& own, Long section_delta,
                                       Long shape_delta) {
  Rewritten_Text output(text);
  Rebased_Database rebased;
  Read_Track_Database(text, [&](const Database_Number& number) {
    const bool is_section = number.Of == Database_Number::Kind::Section;
    if (!(is_section ? own.Sections : own.Shapes).Has(number.Value)) return;
    output.Replace(number.Field, Moved(number.Value, is_section ? section_delta : shape_delta));
    ++(is_section ? rebased.Section_Count : rebased.Shape_Count);
  });
  rebased.Output = output.Finish();
  return rebased;
}

}  // namespace rivelt
