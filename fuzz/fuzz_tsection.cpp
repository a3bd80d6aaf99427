// The pass over a route's tsection.dat.

#include "convert/rebase_tsection.h"

#include "fuzzing.h"
#include "naive_passes.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

namespace {

Outcome Rebase(Text_View text, Long sections, Long shapes, bool* reads_back = nullptr) {
  return Outcome_Of([&](Outcome& outcome, const Log_Line& log) {
    const auto done = reads_back == nullptr
                          ? Rebase_Tsection(text, sections, shapes, log)
                          : naive::Rebase_Tsection(Text(text), sections, shapes, log, *reads_back);
    outcome.Output = done.Output;
    outcome.Numbers = {done.Section_Delta, done.Shape_Delta};
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  const Long sections = Offset(input.Choice);
  const Long shapes = Offset(input.Choice / 8);
  bool reads_back = true;
  const Outcome outcome = Rebase(input.Units, sections, shapes);
  Require(outcome == Rebase(input.Units, sections, shapes, &reads_back), "it is as the naive pass");
  if (!outcome.Failed && reads_back) {
    const Outcome again = Rebase(outcome.Output, sections, shapes);
    Require(again.Output == outcome.Output, "its output comes out again as it is");
    Require(again.Numbers == std::vector<Long>{0, 0}, "its output needs no offsets");
  }
  Require_Speed(input, [](Text_View text) { Rebase(text, 2000, 900); });
  return 0;
}
