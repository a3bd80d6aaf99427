// The passes over the global catalogue, in the order in which the program runs them.

#include "catalogue/catalogue_text.h"
#include "fuzzing.h"
#include "naive_passes.h"
#include "text/block_walker.h"
#include "text/primitives.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

namespace {

void Read(Text_View text, Outcome&, const Log_Line& take) {
  if (const auto version = Catalogue_Version(Trim_Text(text))) take(*version);
  const Text stripped = Without_Comments(Trim_Text(text));
  Text_View rest = stripped;
  for (const Text_View keyword : {u"TrackSections", u"TrackShapes"}) {
    take(Number_Text(Read_Count(rest, keyword)));
  }
  Read_Shapes(rest, [&](Long id, Text_View name) {
    take(Number_Text(id));
    take(name);
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  Require_Twins(input, Read, [](Text_View text, Outcome&, const Log_Line& take) {
    naive::Read_Catalogue(Text(text), take);
  });
  const auto strip = [](auto stripped) {
    return [=](Text_View text, Outcome& outcome, const Log_Line&) {
      outcome.Output = stripped(Text(text), u"_SKIP");
    };
  };
  Require_Twins(input, strip(Strip_Blocks), strip(naive::Strip_Blocks));
  return 0;
}
