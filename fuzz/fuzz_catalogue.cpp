// The passes over the global catalogue, in the order in which the program runs them.

#include "catalogue/catalogue_text.h"
#include "fuzzing.h"
#include "text/primitives.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

namespace {

void Read(Text_View text, Outcome&, const Log_Line& take) {
  if (const auto version = Catalogue_Version(text)) take(*version);
  const Text stripped = Without_Comments(text);
  Text_View rest = stripped;
  for (const Text_View keyword : {u"TrackSections", u"TrackShapes"}) Read_Count(rest, keyword);
  Position names_length = 0;
  const auto add_shape = [&](Long, Text_View name) {
    names_length += static_cast<Position>(name.size());
  };
  Read_Shapes(rest, add_shape);
  Require(names_length <= 2 * static_cast<Position>(rest.size()), "the names stay in proportion");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Timed_Outcome(Read_Input(data, size), Read);
  return 0;
}
