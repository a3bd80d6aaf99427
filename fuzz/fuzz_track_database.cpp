// The pass over a track database.

#include "convert/whole_route.h"
#include "fuzzing.h"
#include "naive_passes.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  const Moving_Ids sections(Number_Set({1900, 1901}), {}, Offset(input.Choice));
  const Moving_Ids shapes(Number_Set({-1, 500, 501}), Number_Set({1460}), Offset(input.Choice / 8));
  const auto with = [&](const auto& rebase) -> Pass {
    return [&](Text_View text, Outcome& outcome, const Log_Line&) {
      Put(rebase(Text(text), sections, shapes), text, outcome);
    };
  };
  Require_Twins(input, with(Rebase_Track_Database), with(naive::Rebase_Track_Database));
  return 0;
}
