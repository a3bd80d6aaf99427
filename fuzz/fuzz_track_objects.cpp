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
  const auto map_shape = [](Text_View name) {
    const auto found = Transforms.find(Fold_Case(name));
    return found == Transforms.end() ? Text(name) : found->second;
  };
  const auto shape_id = [](Text_View name) {
    const auto found = Ids.find(Fold_Case(name));
    return found == Ids.end() ? -1 : found->second;
  };
  const auto with = [&](const auto& check) -> Pass {
    return [&](Text_View text, Outcome& outcome, const Log_Line& log) {
      Put(check(Text(text), {map_shape, shape_id}, log), text, outcome);
    };
  };
  Require_Twins(Read_Input(data, size), with(Check_Track_Objects),
                with(naive::Check_Track_Objects));
  return 0;
}
