// The pass over a track database.

#include "convert/whole_route.h"
#include "fuzzing.h"
#include "naive_passes.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Own_Numbers own{Number_Set({1900, 1901}), Number_Set({-1, 500, 501})};
  const Input input = Read_Input(data, size);
  const auto with = [&](const auto& rebase) -> Pass {
    return [&](Text_View text, Outcome& outcome, const Log_Line&) {
      const auto done = rebase(Text(text), own, Offset(input.Choice), Offset(input.Choice / 8));
      outcome.Output = done.Output;
      outcome.Numbers = {done.Section_Count, done.Shape_Count};
    };
  };
  Require_Twins(input, with(Rebase_Track_Database), with(naive::Rebase_Track_Database));
  return 0;
}
