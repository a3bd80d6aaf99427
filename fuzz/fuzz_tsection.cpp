// The pass over a route's tsection.dat.

#include "convert/rebase_tsection.h"

#include "fuzzing.h"
#include "naive_passes.h"
#include "text/primitives.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  const Long sections = Offset(input.Choice);
  const Long shapes = Offset(input.Choice / 8);
  bool reads_back = true;
  const auto put = [](const Rebased_Tsection& done, Outcome& outcome) {
    outcome.Output = done.Output;
    outcome.Numbers = {done.Section_Delta, done.Shape_Delta};
    for (const Number_Set& own : {done.Own.Sections, done.Own.Shapes}) {
      outcome.Numbers.insert(outcome.Numbers.end(), own.In_Order().begin(), own.In_Order().end());
    }
    for (const Double number : done.Path_Sections) outcome.Lines.push_back(Number_Text(number));
  };
  const Pass pass = [&](Text_View text, Outcome& outcome, const Log_Line& log) {
    put(Rebase_Tsection(text, sections, shapes, log), outcome);
  };
  const Outcome outcome =
      Require_Twins(input, pass, [&](Text_View text, Outcome& twin, const Log_Line& log) {
        put(naive::Rebase_Tsection(Text(text), sections, shapes, log, reads_back), twin);
      });
  if (outcome.Failed || !reads_back) return 0;
  const Outcome again = Outcome_Of(pass, outcome.Output);
  Require(again.Output == outcome.Output, "its output comes out again as it is");
  Require(again.Numbers[0] == 0 && again.Numbers[1] == 0, "its output needs no offsets");
  return 0;
}
