// The passes over the global catalogue, in the order in which the program runs them.

#include "catalogue/catalogue_text.h"
#include "fuzzing.h"
#include "naive_passes.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

namespace {

Pass Reads_With(decltype(&Without_Comments) without_comments, decltype(&Read_Shapes) read_shapes) {
  return [=](Text_View text, Outcome& outcome, const Log_Line& take) {
    if (const auto version = Catalogue_Version(text)) take(*version);
    const Text stripped = without_comments(text);
    Text_View rest = stripped;
    for (const Text_View keyword : {u"TrackSections", u"TrackShapes"}) {
      outcome.Numbers.push_back(Read_Count(rest, keyword));
    }
    read_shapes(rest, [&](Long id, Text_View name) {
      outcome.Numbers.push_back(id);
      take(name);
    });
  };
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Require_Twins(Read_Input(data, size), Reads_With(Without_Comments, Read_Shapes),
                Reads_With(naive::Without_Comments, naive::Read_Shapes));
  return 0;
}
