// The display name of a route.

#include "fuzzing.h"
#include "naive_passes.h"
#include "routes/route_name.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto name_by = [](auto read) {
    return [=](Text_View text, Outcome& outcome, const Log_Line&) { outcome.Output = read(text); };
  };
  Require_Twins(Read_Input(data, size), name_by(Route_Display_Name),
                name_by(naive::Route_Display_Name));
  return 0;
}
