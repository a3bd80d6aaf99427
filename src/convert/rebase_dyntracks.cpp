#include "convert/read_dyntracks.h"
#include "convert/world_passes.h"
#include "text/primitives.h"
#include "text/rewritten_text.h"

namespace rivelt {

Passed_World Rebase_Dyntracks(Text_View text, Long section_delta, Long shape_delta,
                              const Log_Line& log) {
  Rewritten_Text output(text);
  const Long count = Read_Dyntracks(text, [&](const Dyntrack_Number& number) {
    if (number.Of == Dyntrack_Number::Kind::Shape) {
      return output.Replace(number.Field, Number_Text(number.Value + shape_delta) + u' ');
    }
    const bool moves = number.Value != Unused_Section;
    output.Replace(number.Field, Number_Text(moves ? number.Value + section_delta : number.Value));
  });
  log(Number_Text(count) + u" dynamic tracks");
  return {output.Finish(), count};
}

}  // namespace rivelt
