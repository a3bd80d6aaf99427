// The display name of a route.

#include "fuzzing.h"
#include "naive_passes.h"
#include "routes/route_name.h"
#include "text/primitives.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

namespace {

Text Naive_Name(const Text& text) {
  const Position name = naive::Find_Text(1, text, u"Name");
  if (name == 0) throw Failure();
  const std::size_t open = text.find(u'(', static_cast<std::size_t>(name));
  Text rest = open == Text::npos ? text : text.substr(open + 1);
  if (rest.find(u')') == Text::npos) throw Failure();
  rest.erase(rest.find(u')'));
  std::erase(rest, u'"');
  while (rest.starts_with(u' ')) rest.erase(0, 1);
  while (rest.ends_with(u' ')) rest.pop_back();
  return rest;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  const Outcome outcome = Outcome_Of(
      [&](Outcome& result, const Log_Line&) { result.Output = Route_Display_Name(input.Units); });
  Require(outcome == Outcome_Of([&](Outcome& result, const Log_Line&) {
            result.Output = Naive_Name(input.Units);
          }),
          "it is as the naive reading");
  Require_Speed(input, [](Text_View text) { Route_Display_Name(text); });
  return 0;
}
