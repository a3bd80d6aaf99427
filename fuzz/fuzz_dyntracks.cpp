// The pass over the dynamic tracks of a world file.

#include "convert/world_passes.h"
#include "fuzzing.h"
#include "naive_passes.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  const auto with = [&](const auto& rebase) -> Pass {
    return [&](Text_View text, Outcome& outcome, const Log_Line& log) {
      Put(rebase(Text(text), Offset(input.Choice), Offset(input.Choice / 8), log), text, outcome);
    };
  };
  Require_Twins(input, with(Rebase_Dyntracks), with(naive::Rebase_Dyntracks));
  return 0;
}
