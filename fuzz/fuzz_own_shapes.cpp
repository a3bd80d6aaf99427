// The pass over the track objects of a route's own shapes.

#include "convert/whole_route.h"
#include "fuzzing.h"
#include "naive_passes.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto shape_id = [](Text_View name) {
    return name == u"k" || name == u"K" ? 31 : name == u"n" || name == u"N" ? 77 : -1;
  };
  const Input input = Read_Input(data, size);
  const Moving_Ids shapes(Number_Set({-1, 0, 31, 500, 501}), Number_Set({31, 77, 1460}),
                          Offset(input.Choice));
  const auto with = [&](const auto& rebase) -> Pass {
    return [&](Text_View text, Outcome& outcome, const Log_Line&) {
      Put(rebase(Text(text), shapes, shape_id), text, outcome);
    };
  };
  const auto rebase = [](Text_View text, const Moving_Ids& ids, const Id_Of_Shape& ids_by_name) {
    return Rebase_Own_Shapes(text, ids, ids_by_name);
  };
  Require_Twins(input, with(rebase), with(naive::Rebase_Own_Shapes));
  return 0;
}
