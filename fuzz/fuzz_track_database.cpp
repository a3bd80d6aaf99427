// The pass over a track database.

#include "convert/whole_route.h"
#include "fuzzing.h"
#include "naive_passes.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

namespace {

const Own_Numbers Own{Number_Set({1900, 1901}), Number_Set({-1, 500, 501})};

void Put(const Rebased_Database& rebased, Outcome& outcome) {
  outcome.Output = rebased.Output;
  outcome.Numbers = {rebased.Section_Count, rebased.Shape_Count};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  Long sections = Offset(input.Choice);
  Long shapes = Offset(input.Choice / 8);
  const Pass pass = [&](Text_View text, Outcome& outcome, const Log_Line&) {
    Put(Rebase_Track_Database(text, Own, sections, shapes), outcome);
  };
  const Outcome outcome =
      Require_Twins(input, pass, [&](Text_View text, Outcome& twin, const Log_Line&) {
        Put(naive::Rebase_Track_Database(Text(text), Own, sections, shapes), twin);
      });
  if (outcome.Failed) return 0;
  sections = shapes = 0;
  Require(!Outcome_Of(pass, outcome.Output).Failed, "its output is a database");
  return 0;
}
