// The passes over the global catalogue, in the order in which the program runs them.

#include "catalogue/catalogue_text.h"
#include "fuzzing.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Pass read = [](Text_View text, Outcome&, const Log_Line&) {
    Catalogue_Version(text);
    Text stripped = Without_Comments(text);
    Text_View rest = stripped;
    for (const Text_View keyword : {u"TrackSections", u"TrackShapes"}) Read_Count(rest, keyword);
    std::vector<Text> names;
    Read_Shapes(rest, [&](Long, Text_View name) { names.emplace_back(name); });
    std::erase(stripped, u'"');
    for (const Text& name : names) {
      Require(stripped.find(name) != Text::npos, "a name stands in the catalogue");
    }
  };
  Timed_Outcome(Read_Input(data, size), read);
  return 0;
}
