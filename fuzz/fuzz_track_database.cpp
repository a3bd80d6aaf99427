// The pass over a track database: it moves what its reader finds, and changes nothing else.

#include "convert/track_database.h"

#include "convert/whole_route.h"
#include "fuzzing.h"
#include "text/primitives.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  const Moving_Ids sections(Number_Set({1900, 1901}), {}, Offset(input.Choice));
  const Moving_Ids shapes(Number_Set({-1, 500, 501}), Number_Set({1460}), Offset(input.Choice / 8));
  const auto move = [&](Text_View text, Rewritten_Text& output) {
    Read_Track_Database(text, [&](const Database_Number& number) {
      const auto& ids = number.Of == Database_Number::Kind::Section ? sections : shapes;
      if (!ids.Own.Has(number.Value)) return;
      output.Replace(number.Field, Trim_Text(Number_Text(number.Value + ids.Delta)));
    });
  };
  Require_Moved(input, move, [&](Text_View text, Purpose purpose) {
    return Rebase_Track_Database(text, sections, shapes, purpose);
  });
  return 0;
}
