#include <benchmark/benchmark.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "repeated.h"
#include "text/primitives.h"

namespace rivelt::bench {
namespace {

using Clock = std::chrono::steady_clock;

double Seconds_Since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// A search that reads the whole text, by turns with a copy of the same text. "of_memcpy" is the
// share of the copy's bytes a second that the search reaches.
void Find_Text_Without_A_Hit(benchmark::State& state, Text_View target) {
  const Text text = Realistic_World((std::size_t{64} << 20) / sizeof(char16_t));
  const std::size_t bytes = text.size() * sizeof(char16_t);
  std::vector<char> copy(bytes);
  if (Find_Text(1, text, target) != 0) return state.SkipWithError("there is a hit");
  double copying = 0;
  double searching = 0;
  for (auto _ : state) {
    const auto copy_start = Clock::now();
    std::memcpy(copy.data(), text.data(), bytes);
    benchmark::ClobberMemory();
    copying += Seconds_Since(copy_start);
    const auto start = Clock::now();
    Position found = Find_Text(1, text, target);
    benchmark::DoNotOptimize(found);
    const double search = Seconds_Since(start);
    searching += search;
    state.SetIterationTime(search);
  }
  const double copied = static_cast<double>(bytes) * static_cast<double>(state.iterations());
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
  state.counters["memcpy_bytes_per_second"] = {copied / copying, benchmark::Counter::kDefaults,
                                               benchmark::Counter::kIs1024};
  state.counters["of_memcpy"] = copying / searching;
}
BENCHMARK_CAPTURE(Find_Text_Without_A_Hit, rare_letters, Text_View(u"Tr_Worldfilx"))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Find_Text_Without_A_Hit, keyword, Text_View(u"TrackShape"))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Find_Text_Without_A_Hit, one_unit, Text_View(u"%"))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

Long Count_Hits(Text_View text, Text_View target) {
  Long hits = 0;
  while (const Position position = Find_Text(1, text, target)) {
    ++hits;
    text = Mid_Text(text, position + 1);
  }
  return hits;
}

Long Count_Plainly(Text_View text, Text_View target) {
  Long hits = 0;
  for (std::size_t i = text.find(target); i != Text_View::npos; i = text.find(target, i + 1))
    ++hits;
  return hits;
}

// From hit to hit, as the passes search. The text has its words in one letter case only.
void Find_Text_From_Hit_To_Hit(benchmark::State& state, Text_View target) {
  const Text text = Realistic_World(1'000'000);
  const Long hits = Count_Plainly(text, target);
  Time_Checked(state, text, [&] { return Count_Hits(text, target) == hits; });
  state.counters["units_between_hits"] = static_cast<double>(text.size()) / hits;
  state.counters["time_per_hit"] =
      benchmark::Counter(static_cast<double>(hits), benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}
BENCHMARK_CAPTURE(Find_Text_From_Hit_To_Hit, blank, Text_View(u" "));
BENCHMARK_CAPTURE(Find_Text_From_Hit_To_Hit, bracket, Text_View(u"("));
BENCHMARK_CAPTURE(Find_Text_From_Hit_To_Hit, position, Text_View(u"Position"));
BENCHMARK_CAPTURE(Find_Text_From_Hit_To_Hit, track_object, Text_View(u"TrackObj"));

}  // namespace
}  // namespace rivelt::bench
