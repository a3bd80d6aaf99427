// The pass over a route's tsection.dat.

#include "convert/rebase_tsection.h"

#include "fuzzing.h"
#include "naive_passes.h"
#include "text/primitives.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  const auto with = [&](const auto& rebase) -> Pass {
    return [&](Text_View text, Outcome& outcome, const Log_Line& log) {
      const auto done = rebase(Text(text), Offset(input.Choice), Offset(input.Choice / 8), log);
      outcome.Output = done.Output.value_or(Text(text));
      outcome.Numbers = {done.Section_Delta, done.Shape_Delta};
      for (const Number_Set& own : {done.Own.Sections, done.Own.Shapes}) {
        outcome.Numbers.insert(outcome.Numbers.end(), own.In_Order().begin(), own.In_Order().end());
      }
      for (const Double number : done.Path_Sections) outcome.Lines.push_back(Number_Text(number));
    };
  };
  Require_Twins(input, with(Rebase_Tsection), with(naive::Rebase_Tsection));
  return 0;
}
