// The pass over the dynamic tracks of a world file.

#include "convert/world_passes.h"
#include "fuzzing.h"
#include "naive_passes.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  Long section_delta = Offset(input.Choice);
  Long shape_delta = Offset(input.Choice / 8);
  bool reads_back = true;
  const Pass pass = [&](Text_View text, Outcome& outcome, const Log_Line& log) {
    Put(Rebase_Dyntracks(text, section_delta, shape_delta, log), outcome);
  };
  const Outcome outcome =
      Require_Twins(input, pass, [&](Text_View text, Outcome& twin, const Log_Line& log) {
        Put(naive::Rebase_Dyntracks(Text(text), section_delta, shape_delta, log, reads_back), twin);
      });
  if (outcome.Failed || !reads_back) return 0;
  section_delta = shape_delta = 0;
  Require(Outcome_Of(pass, outcome.Output) == outcome, "its output comes out again as it is");
  return 0;
}
