// The pass over the dynamic tracks of a world file.

#include "convert/world_passes.h"
#include "fuzzing.h"
#include "naive_passes.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

namespace {

Outcome Rebase(Text_View text, Long section_delta, Long shape_delta, bool* reads_back = nullptr) {
  return Outcome_Of([&](Outcome& outcome, const Log_Line& log) {
    const auto passed =
        reads_back == nullptr
            ? Rebase_Dyntracks(text, section_delta, shape_delta, log)
            : naive::Rebase_Dyntracks(Text(text), section_delta, shape_delta, log, *reads_back);
    outcome.Output = passed.Output;
    outcome.Numbers = {passed.Count};
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  const Long section_delta = Offset(input.Choice);
  const Long shape_delta = Offset(input.Choice / 8);
  bool reads_back = true;
  const Outcome outcome = Rebase(input.Units, section_delta, shape_delta);
  Require(outcome == Rebase(input.Units, section_delta, shape_delta, &reads_back),
          "it is as the naive pass");
  if (!outcome.Failed && reads_back) {
    Require(Rebase(outcome.Output, 0, 0) == outcome, "its output comes out again as it is");
  }
  Require_Speed(input, [](Text_View text) { Rebase(text, 1, 1); });
  return 0;
}
