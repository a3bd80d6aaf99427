// The pass over the track objects of a route's own shapes.

#include <map>

#include "convert/whole_route.h"
#include "fuzzing.h"
#include "naive_passes.h"
#include "text/letter_case.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

namespace {

const Own_Numbers Own{{}, Number_Set({-1, 31, 500, 501})};
const std::map<Text, Long> Ids{{u"k", 31}, {u"n", 77}};

Long Shape_Id(Text_View name) {
  const auto found = Ids.find(Fold_Case(name));
  return found == Ids.end() ? -1 : found->second;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  const Long delta = Offset(input.Choice);
  const Pass pass = [&](Text_View text, Outcome& outcome, const Log_Line& log) {
    Put(Rebase_Own_Shapes(Text(text), Own, delta, Shape_Id, log), outcome);
  };
  Require_Twins(input, pass, [&](Text_View text, Outcome& twin, const Log_Line& log) {
    Put(naive::Rebase_Own_Shapes(Text(text), Own, delta, Shape_Id, log), twin);
  });
  return 0;
}
