#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>

#include "convert/rebase_tsection.h"
#include "convert/world_passes.h"
#include "sample/random_source.h"
#include "sample/track.h"
#include "repeated.h"
#include "text/keyed_collection.h"
#include "text/primitives.h"
#include "window/controls.h"

namespace rivelt::bench {
namespace {

void No_Log(Text_View) {}

std::size_t Units(const benchmark::State& state) {
  return static_cast<std::size_t>(state.range(0));
}

// A text of one line over and over, and what a pass should make of it.
struct Hostile {
  const char* Name;
  Text_View Line;
  Text_View Tail;
  enum class Outcome { Fails, Log_Line_For_Each, Only_The_Closing_Line, Any_Log } Expected;
  Text_View Head = {};
};

// Track objects

void Check_Track_Objects_Of_A_Real_File(benchmark::State& state) {
  const Text text = Realistic_World(Units(state));
  Keyed_Collection<Long> ids;
  for (const sample::Shape& shape : sample::Invent_Shapes(300)) {
    if (shape.Is_Listed()) ids.Add(shape.Id, shape.File_Name);
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

using enum Hostile::Outcome;

// The shapes: a.s is known by the id 1, gone.s is to be removed.
constexpr Hostile Hostile_Objects[] = {
    {"no_keyword", u"Forest ( UiD ( 1 ) )\r\n", u"", Only_The_Closing_Line},
    {"half_a_keyword", u"TrackOb", u"", Only_The_Closing_Line},
    {"keyword_alone", u"TrackObj\r\n", u"", Fails},
    {"keyword_alone_before_a_record", u"TrackObj\r\n", u"( SectionIdx ( 1 ) FileName ( a.s ) )",
     Only_The_Closing_Line},
    {"empty", u"TrackObj ( )\r\n", u"SectionIdx ( 1 ) FileName ( a.s )", Log_Line_For_Each},
    {"unbalanced", u"TrackObj (\r\n", u"SectionIdx ( 1 ) FileName ( a.s )", Only_The_Closing_Line},
    {"no_name", u"TrackObj ( SectionIdx ( 1 ) )\r\n", u"FileName ( a.s )", Log_Line_For_Each},
    {"no_name_unbalanced", u"TrackObj ( SectionIdx ( 1 )\r\n", u"FileName ( a.s )",
     Only_The_Closing_Line},
    {"no_name_at_all", u"TrackObj ( SectionIdx ( 1 ) )\r\n", u"", Fails},
    {"no_id", u"TrackObj ( FileName ( a.s ) )\r\n", u"SectionIdx ( 1 )", Log_Line_For_Each},
    {"name_first", u"TrackObj ( FileName ( a.s ) SectionIdx ( 1 ) )\r\n", u"",
     Only_The_Closing_Line},
    {"name_first_of_all", u"TrackObj ( SectionIdx ( 1 ) )\r\n", u") FileName", Log_Line_For_Each,
     u"TrackObj ( FileName ( a.s ) SectionIdx ( 1 ) "},
    {"name_first_unbalanced", u"TrackObj ( FileName ( a.s ) SectionIdx ( 1 )\r\n",
     u"FileName ( a.s )", Only_The_Closing_Line},
    {"well_formed", u"TrackObj ( SectionIdx ( 1 ) FileName ( a.s ) )\r\n", u"",
     Only_The_Closing_Line},
    {"well_formed_unbalanced", u"TrackObj ( SectionIdx ( 1 ) FileName ( a.s )\r\n", u"",
     Only_The_Closing_Line},
    {"removed", u"TrackObj ( SectionIdx ( 1 ) FileName ( gone.s ) )\r\n", u"",
     Only_The_Closing_Line},
    {"removed_nested_deep",
     u"TrackObj ( SectionIdx ( 1 ) FileName ( gone.s ) ((((((((((((())))))))))))) )\r\n", u"",
     Only_The_Closing_Line},
    {"removed_unbalanced", u"TrackObj ( SectionIdx ( 1 ) FileName ( gone.s )\r\n", u"", Fails},
    {"id_never_closed", u"TrackObj ( SectionIdx ( 1\r\n", u"", Fails},
    {"name_never_closed", u"TrackObj ( SectionIdx ( 1 ) FileName ( a.s\r\n", u")", Any_Log},
    {"name_cut_in_quotes", u"TrackObj ( SectionIdx ( 1 ) FileName ( \"a).s\" ) )\r\n", u"",
     Log_Line_For_Each},
    {"bracket_of_the_id_opens", u"TrackObj SectionIdx ( 1 ) FileName\r\n", u"", Log_Line_For_Each},
    {"long_number", u"1111111111111111", u"TrackObj ( SectionIdx ( 1 ) FileName ( a.s ) )",
     Only_The_Closing_Line},
};

bool Is_As_Expected(Hostile::Outcome expected, std::size_t logged, std::size_t lines) {
  switch (expected) {
    case Log_Line_For_Each:
      return logged == lines + 1;
    case Only_The_Closing_Line:
      return logged == 1;
    default:
      return expected == Any_Log;
  }
}

void Time_Hostile_Objects(benchmark::State& state, const Hostile& input, const Text& text) {
  const std::size_t lines =
      (text.size() - input.Head.size() - input.Tail.size()) / input.Line.size();
  const Shape_Tables tables{
      [](Text_View name) { return name == u"gone.s" ? Text(Delete_Entry) : Text(name); },
      [](Text_View) { return 1; }};
  Time_Checked(state, text, [&] {
    std::size_t logged = 0;
    const auto work = [&] { Check_Track_Objects(text, tables, [&](Text_View) { ++logged; }); };
    if (Ends_In_Failure(work)) return input.Expected == Hostile::Outcome::Fails;
    return Is_As_Expected(input.Expected, logged, lines);
  });
}

// One record around another, all of them closed at the end.
void Check_Track_Objects_Nested(benchmark::State& state, Hostile input) {
  const Text front = Repeated(input.Line, Units(state));
  const Text back = Repeated(u")", front.size() / input.Line.size(), input.Tail);
  Time_Hostile_Objects(state, input, front + back);
}
BENCHMARK_CAPTURE(Check_Track_Objects_Nested, name_first,
                  Hostile{"", u"TrackObj ( FileName ( a.s ) SectionIdx ( 1 )\r\n", u"", Any_Log})
    ->Apply(Growing_Sizes);
BENCHMARK_CAPTURE(Check_Track_Objects_Nested, one_quotation_mark,
                  Hostile{"", u"TrackObj ( SectionIdx ( 1 ) FileName ( \"a.s )\r\n", u"", Any_Log})
    ->Apply(Growing_Sizes);
BENCHMARK_CAPTURE(Check_Track_Objects_Nested, empty,
                  Hostile{"", u"TrackObj (\r\n", u" SectionIdx ( 1 ) FileName ( a.s )", Any_Log})
    ->Apply(Growing_Sizes);
BENCHMARK_CAPTURE(Check_Track_Objects_Nested, name_first,
                  Hostile{"", u"TrackObj ( FileName ( a.s ) SectionIdx ( 1 )\r\n", u"", Any_Log})
    ->Apply(Growing_Sizes);
BENCHMARK_CAPTURE(Check_Track_Objects_Nested, name_inside,
                  Hostile{"", u"TrackObj ( SectionIdx ( 1 )\r\n", u"FileName ( a.s )", Any_Log})
    ->Apply(Growing_Sizes);
BENCHMARK_CAPTURE(Check_Track_Objects_Nested, well_formed,
                  Hostile{"", u"TrackObj ( SectionIdx ( 1 ) FileName ( a.s )\r\n", u"",
                          Only_The_Closing_Line})
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

constexpr Hostile Hostile_Dyntracks[] = {
    {"no_keyword", u"Forest ( UiD ( 1 ) )\r\n", u"", Only_The_Closing_Line},
    {"keyword_alone", u"Dyntrack\r\n", u"", Fails},
    {"keyword_alone_before_a_track", u"Dyntrack\r\n", Five_Sections, Fails},
    {"sections_without_bracket", u"Dyntrack SectionCurve 38000 \r\n", u"", Fails},
    {"sections_without_track", u"SectionCurve ( 0 ) 38000 5 0\r\n", u"", Only_The_Closing_Line},
};

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

constexpr Hostile Hostile_Tsections[] = {
    {"no_keyword", u"TrackSection ( 1 )\r\n", u"", Fails},
    {"sections_on_every_line", u"SectionCurve ( 1 ) 38000 5 0\r\n", u"SectionIdx ( 1", Any_Log},
    {"sections_never_closed", u"SectionCurve ( 1 38000 5 0\r\n", u"", Fails},
    {"sections_closed_at_the_end", u"SectionCurve ( 1 38000\r\n", u") 38000 5 SectionIdx ( 1",
     Any_Log},
    {"heads_on_every_line", u"SectionIdx ( 1\r\n", u"", Only_The_Closing_Line},
    {"one_long_path", u"38000 ", u")", Any_Log, u"SectionIdx ( 1 TrackPath ( "},
    {"paths_never_closed", u"SectionIdx ( 1 TrackPath ( 38000 1 38000\r\n", u"", Fails},
    {"paths_without_bracket", u"SectionIdx ( 1 TrackPath\r\n", u"", Fails},
    {"paths_on_every_line", u"SectionIdx ( 1 TrackPath ( 38000 1 38000 )\r\n", u"", Any_Log},
};

void Time_Hostile(benchmark::State& state, const Hostile& input,
                  void (*pass)(const Text&, const Log_Line&)) {
  const Text text = Text(input.Head) + Repeated(input.Line, Units(state), input.Tail);
  const std::size_t lines = (text.size() - input.Tail.size()) / input.Line.size();
  Time_Checked(state, text, [&] {
    std::size_t logged = 0;
    const Log_Line log = [&](Text_View) { ++logged; };
    if (Ends_In_Failure([&] { pass(text, log); })) return input.Expected == Hostile::Outcome::Fails;
    return Is_As_Expected(input.Expected, logged, lines);
  });
}

const bool Registered = [] {
  for (const Hostile& input : Hostile_Objects) {
    const std::string name = std::string("Check_Track_Objects_Hostile/") + input.Name;
    benchmark::RegisterBenchmark(name.c_str(), [&input](benchmark::State& state) {
      Time_Hostile_Objects(state, input,
                           Text(input.Head) + Repeated(input.Line, Units(state), input.Tail));
    })->Apply(Growing_Sizes);
  }
  for (const Hostile& input : Hostile_Dyntracks) {
    const std::string name = std::string("Rebase_Dyntracks_Hostile/") + input.Name;
    benchmark::RegisterBenchmark(name.c_str(), [&input](benchmark::State& state) {
      Time_Hostile(state, input, [](const Text& text, const Log_Line& log) {
        Rebase_Dyntracks(text, 2000, 2000, log);
      });
    })->Apply(Growing_Sizes);
  }
  for (const Hostile& input : Hostile_Tsections) {
    const std::string name = std::string("Rebase_Tsection_Hostile/") + input.Name;
    benchmark::RegisterBenchmark(name.c_str(), [&input](benchmark::State& state) {
      Time_Hostile(state, input, [](const Text& text, const Log_Line& log) {
        Rebase_Tsection(text, 40000, 40000, log);
      });
    })->Apply(Growing_Sizes);
  }
  return true;
}();

}  // namespace
}  // namespace rivelt::bench
