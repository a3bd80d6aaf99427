#include <benchmark/benchmark.h>

#include <cstddef>
#include <vector>

#include "convert/rebase_tsection.h"
#include "convert/whole_route.h"
#include "convert/world_passes.h"
#include "repeated.h"
#include "sample/random_source.h"
#include "sample/track.h"
#include "text/keyed_collection.h"
#include "text/primitives.h"

namespace rivelt::bench {
namespace {

void No_Log(Text_View) {}

std::size_t Units(const benchmark::State& state) {
  return static_cast<std::size_t>(state.range(0));
}

// Track objects

void Check_Track_Objects_Of_A_Real_File(benchmark::State& state) {
  const Text text = Realistic_World(Units(state));
  Keyed_Collection<Long> ids;
  for (const sample::Shape& shape : sample::Invent_Shapes(300)) {
    if (shape.Kind == sample::Shape::Record::Plain) ids.Add(shape.Id, shape.File_Name);
  }
  const Shape_Tables tables{[](Text_View name) { return Text(name); },
                            [&](Text_View name) {
                              try {
                                return ids.Look_Up(name);
                              } catch (const Failure&) {
                                return -1;
                              }
                            }};
  Time_Checked(state, text, [&] {
    Long logged_changes = 0;
    const Passed_World passed = Check_Track_Objects(text, tables, [&](Text_View line) {
      logged_changes += Find_Text(1, line, u" -> ") != 0 ? 1 : 0;
    });
    return passed.Count > 0 && passed.Count == logged_changes;
  });
}
BENCHMARK(Check_Track_Objects_Of_A_Real_File)->Apply(Growing_Sizes);

// One record around another, all of them closed at the end.
void Check_Track_Objects_Nested(benchmark::State& state, Text_View line, Text_View tail) {
  const Text front = Repeated(line, Units(state));
  const Text text = front + Repeated(u")", front.size() / line.size(), tail);
  const Shape_Tables tables{[](Text_View name) { return Text(name); }, [](Text_View) { return 1; }};
  Time_Checked(state, text, [&] {
    return Check_Track_Objects(text, tables, No_Log).Output.value_or(text) == text;
  });
}
BENCHMARK_CAPTURE(Check_Track_Objects_Nested, name_first,
                  u"TrackObj ( FileName ( a.s ) SectionIdx ( 1 )\r\n", u"")
    ->Apply(Growing_Sizes);
BENCHMARK_CAPTURE(Check_Track_Objects_Nested, name_inside, u"TrackObj ( SectionIdx ( 1 )\r\n",
                  u"FileName ( a.s )")
    ->Apply(Growing_Sizes);
BENCHMARK_CAPTURE(Check_Track_Objects_Nested, well_formed,
                  u"TrackObj ( SectionIdx ( 1 ) FileName ( a.s )\r\n", u"")
    ->Apply(Growing_Sizes);

// Dynamic tracks

constexpr Text_View Five_Sections =
    u"SectionCurve ( 0 ) 38000 5 0\r\nSectionCurve ( 1 ) 38001 1 9\r\n"
    u"SectionCurve ( 0 ) 4294967295 0 0\r\nSectionCurve ( 1 ) 4294967295 0 0\r\n"
    u"SectionCurve ( 0 ) 4294967295 0 0\r\nSectionIdx ( 38000 )\r\n";

void Rebase_Dyntracks_Of_A_Real_File(benchmark::State& state) {
  const Text text = Realistic_World(Units(state));
  Long tracks = 0;
  for (std::size_t at = 0; (at = text.find(u"Dyntrack", at)) != Text::npos; ++at) ++tracks;
  Time_Checked(state, text, [&] {
    return tracks > 0 && Rebase_Dyntracks(text, 2000, 2000, No_Log).Count == tracks;
  });
}
BENCHMARK(Rebase_Dyntracks_Of_A_Real_File)->Apply(Growing_Sizes);

void Rebase_Dyntracks_On_Every_Line(benchmark::State& state) {
  const Text track = Text(u"Dyntrack ( ") + Text(Five_Sections) + u")\r\n";
  const Text text = Repeated(track, Units(state));
  const Long tracks = static_cast<Long>(text.size() / track.size());
  Time_Checked(state, text,
               [&] { return Rebase_Dyntracks(text, 2000, 2000, No_Log).Count == tracks; });
}
BENCHMARK(Rebase_Dyntracks_On_Every_Line)->Apply(Growing_Sizes);

// Local catalogues

void Rebase_Tsection_Of_A_Real_File(benchmark::State& state) {
  constexpr std::size_t units_of_a_track = 230;
  const Text text = sample::Local_Catalogue(sample::Invent_Dynamic_Tracks(
      Units(state) / units_of_a_track, 30000, 30000, sample::Random_Source(1)));
  Time_Checked(state, text, [&] {
    const Rebased_Tsection rebased = Rebase_Tsection(text, 40000, 40000, No_Log);
    return rebased.Section_Delta == 10000 && rebased.Shape_Delta == 10000;
  });
}
BENCHMARK(Rebase_Tsection_Of_A_Real_File)->Apply(Growing_Sizes);

// A route as a whole

constexpr Long First_Own = 38000;

Moving_Ids Forty_Own_Shapes() {
  std::vector<Double> numbers;
  for (Long id = First_Own; id < First_Own + 40; ++id) numbers.push_back(id);
  return {Number_Set(numbers), {}, 2000};
}

void Rebase_Own_Shapes_Of_A_Real_File(benchmark::State& state) {
  const Text text = Realistic_World(Units(state));
  const Moving_Ids own = Forty_Own_Shapes();
  Time_Checked(state, text, [&] {
    return Rebase_Own_Shapes(text, own, [](Text_View) { return -1; }).Shape_Count > 0;
  });
}
BENCHMARK(Rebase_Own_Shapes_Of_A_Real_File)->Apply(Growing_Sizes);

void Rebase_Track_Database_Of_A_Real_File(benchmark::State& state) {
  const Text text = Realistic_Database(Units(state));
  const Moving_Ids own = Forty_Own_Shapes();
  Time_Checked(state, text, [&] {
    const Renumbered_File rebased = Rebase_Track_Database(text, own, own);
    return rebased.Section_Count > 0 && rebased.Shape_Count > 0;
  });
}
BENCHMARK(Rebase_Track_Database_Of_A_Real_File)->Apply(Growing_Sizes);

}  // namespace
}  // namespace rivelt::bench
