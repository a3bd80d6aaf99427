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

Outcome Check(Text_View text, bool maps, bool* reads_back = nullptr) {
  return Outcome_Of([&](Outcome& outcome, const Log_Line& log) {
    const auto map_shape = [maps](Text_View name) {
      const auto found = maps ? Transforms.find(Fold_Case(name)) : Transforms.end();
      return found == Transforms.end() ? Text(name) : found->second;
    };
    const auto shape_id = [](Text_View name) {
      const auto found = Ids.find(Fold_Case(name));
      return found == Ids.end() ? -1 : found->second;
    };
    const Shape_Tables tables{map_shape, shape_id};
    const auto passed = reads_back == nullptr
                            ? Check_Track_Objects(text, tables, log)
                            : naive::Check_Track_Objects(Text(text), tables, log, *reads_back);
    outcome.Output = passed.Output;
    outcome.Numbers = {passed.Count};
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  bool reads_back = true;
  const Outcome outcome = Check(input.Units, true);
  Require(outcome == Check(input.Units, true, &reads_back), "it is as the naive pass");
  if (!outcome.Failed && reads_back) {
    const Outcome again = Check(outcome.Output, false);
    Require(again.Output == outcome.Output, "its output comes out again as it is");
    Require(again.Numbers == std::vector<Long>{0}, "its output needs no change");
  }
  Require_Speed(input, [](Text_View text) { Check(text, true); });
  return 0;
}
