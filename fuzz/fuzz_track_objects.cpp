// The pass over the track objects of a world file.

#include <map>

#include "convert/world_passes.h"
#include "fuzzing.h"
#include "naive_passes.h"
#include "text/letter_case.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::map<Text, Text> names{{u"o", u"n"}, {u"g", u" -delete-"}, {u"g(", u" -delete-"},
                                          {u"c", u"K"}, {u"u(", u"nowhere"},  {u"s", u"k(2"}};
  static const std::map<Text, Long> ids{{u"k", 31}, {u"n", 77}, {u"k(2", 31}, {u"z", 0}};
  const auto of = [](const auto& table, Text_View name, auto otherwise) {
    const auto found = table.find(Fold_Case(name));
    return found == table.end() ? otherwise : found->second;
  };
  const auto map_shape = [&](Text_View name) { return of(names, name, Text(name)); };
  const auto shape_id = [&](Text_View name) { return of(ids, name, Long(-1)); };
  const auto with = [&](const auto& check) -> Pass {
    return [&](Text_View text, Outcome& outcome, const Log_Line& log) {
      Put(check(Text(text), {map_shape, shape_id}, log), text, outcome);
    };
  };
  Require_Twins(Read_Input(data, size), with(Check_Track_Objects),
                with(naive::Check_Track_Objects));
  return 0;
}
