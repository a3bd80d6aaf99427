// The passes over the global catalogue, in the order in which the program runs them.

#include "catalogue/catalogue.h"
#include "fuzzing.h"
#include "text/block_walker.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Pass read = [](Text_View text, Outcome&, const Log_Line&) {
    Catalogue_Version(text);
    std::vector<Text> names;
    Read_Catalogue(text, [&](Long, Text_View name) { names.emplace_back(name); });
    Text stripped = Strip_Blocks(Strip_Blocks(text, u"_SKIP"), u"_INFO");
    std::erase(stripped, u'"');
    for (const Text& name : names) {
      Require(stripped.find(name) != Text::npos, "a name stands in the catalogue");
    }
  };
  Timed_Outcome(Read_Input(data, size), read);
  return 0;
}
