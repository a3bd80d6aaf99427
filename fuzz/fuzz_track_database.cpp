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
  const auto rebase = [](Text_View text, const Moving_Ids& first, const Moving_Ids& second) {
    return Rebase_Track_Database(text, first, second);
  };
  Require_Twins(input, with(rebase), with(naive::Rebase_Track_Database));
  return 0;
}
