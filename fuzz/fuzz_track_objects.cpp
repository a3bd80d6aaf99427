// The pass over the track objects of a world file.

#include <map>

#include "convert/world_passes.h"
#include "fuzzing.h"
#include "naive_passes.h"
#include "text/letter_case.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

namespace {

const std::map<Text, Text> Transforms{{u"o", u"n"}, {u"g", u" -delete-"}, {u"g(", u" -delete-"},
                                      {u"c", u"K"}, {u"u(", u"nowhere"},  {u"s", u"k(2"}};
const std::map<Text, Long> Ids{{u"k", 31}, {u"n", 77}, {u"k(2", 31}, {u"z", 0}};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  bool maps = true;
  bool reads_back = true;
  const auto map_shape = [&](Text_View name) {
    const auto found = maps ? Transforms.find(Fold_Case(name)) : Transforms.end();
    return found == Transforms.end() ? Text(name) : found->second;
  };
  const auto shape_id = [](Text_View name) {
    const auto found = Ids.find(Fold_Case(name));
    return found == Ids.end() ? -1 : found->second;
  };
  const Shape_Tables tables{map_shape, shape_id};
  const Pass pass = [&](Text_View text, Outcome& outcome, const Log_Line& log) {
    Put(Check_Track_Objects(text, tables, log), outcome);
  };
  const Outcome outcome =
      Require_Twins(input, pass, [&](Text_View text, Outcome& twin, const Log_Line& log) {
        Put(naive::Check_Track_Objects(Text(text), tables, log, reads_back), twin);
      });
  if (outcome.Failed || !reads_back) return 0;
  maps = false;
  const Outcome again = Outcome_Of(pass, outcome.Output);
  Require(again.Output == outcome.Output, "its output comes out again as it is");
  Require(again.Numbers == std::vector<Long>{0}, "its output needs no change");
  return 0;
}
