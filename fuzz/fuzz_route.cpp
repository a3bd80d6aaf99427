// The display name of a route.

#include "fuzzing.h"
#include "routes/route_name.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Pass read = [](Text_View text, Outcome& outcome, const Log_Line&) {
    outcome.Output = Route_Display_Name(text);
  };
  Input input = Read_Input(data, size);
  const Outcome outcome = Timed_Outcome(input, read);
  std::erase(input.Units, u'"');
  Require(input.Units.find(outcome.Output) != Text::npos, "a name stands in the file");
  return 0;
}
