// The pass over the track objects of a route's own shapes: it moves their numbers and no others,
// and changes nothing else. The reader of track objects has its twin with the pass that checks
// them.

#include "convert/whole_route.h"
#include "fuzzing.h"
#include "text/primitives.h"
#include "text/token_reader.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto shape_id = [](Text_View name) {
    return name == u"k" || name == u"K" ? 31 : name == u"n" || name == u"N" ? 77 : -1;
  };
  const Input input = Read_Input(data, size);
  const Moving_Ids shapes(Number_Set({-1, 0, 31, 500, 501}), Number_Set({31, 77, 1460}),
                          Offset(input.Choice));
  const auto move = [&](Text_View text, Rewritten_Text& output) {
    Read_Track_Objects(text, [&](const Track_Object& object) {
      const Number_Reading number = Read_Number(object.Id);
      if (!object.Is_Readable || !number.Has_Digits) return;
      if (!shapes.Own.Has(number.Value) || Is_Of_Catalogue(object, shape_id)) return;
      output.Replace(Without_Blanks(Left_Text(object.Id, number.End)),
                     Trim_Text(Number_Text(number.Value + shapes.Delta)));
    });
  };
  Require_Moved(input, move, [&](Text_View text, Purpose purpose) {
    return Rebase_Own_Shapes(text, shapes, shape_id, purpose);
  });
  return 0;
}
