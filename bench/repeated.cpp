#include "repeated.h"

#include <cstdint>

#include "sample/random_source.h"
#include "sample/track.h"

namespace rivelt::bench {

void Growing_Sizes(benchmark::internal::Benchmark* a_case) {
  for (const std::int64_t units : {1'250'000, 2'500'000, 5'000'000, 10'000'000}) {
    a_case->Arg(units);
  }
  a_case->Complexity(benchmark::oN)->Unit(benchmark::kMillisecond);
}

Text Repeated(Text_View line, std::size_t units, Text_View tail) {
  Text text;
  text.reserve(units + tail.size());
  while (text.size() + line.size() <= units) text += line;
  text += tail;
  return text;
}

namespace {

sample::World Invented_World(std::int64_t objects) {
  const sample::Route_Track route{
      u"AMBREWICK", sample::Invent_Shapes(300),
      sample::Invent_Dynamic_Tracks(40, 38000, 38000, sample::Random_Source(1))};
  return sample::Invent_World(route, objects, true, sample::Random_Source(2));
}

}  // namespace

Text Realistic_World(std::size_t units) {
  constexpr std::size_t units_of_an_object = 300;
  return Invented_World(static_cast<std::int64_t>(units / units_of_an_object)).File;
}

Text Realistic_Database(std::size_t units) {
  constexpr std::size_t units_of_an_object = 135;
  sample::Track_Database database;
  database.Add_Tile(-5354, 14850,
                    Invented_World(static_cast<std::int64_t>(units / units_of_an_object)).Track);
  return database.File();
}

void Time_Checked(benchmark::State& state, Text_View input, const std::function<bool()>& work) {
  if (!work()) {
    state.SkipWithError("the result is wrong");
    return;
  }
  for (auto _ : state) {
    bool right = work();
    benchmark::DoNotOptimize(right);
  }
  const auto bytes = static_cast<std::int64_t>(input.size() * sizeof(char16_t));
  state.SetBytesProcessed(state.iterations() * bytes);
  state.SetComplexityN(static_cast<std::int64_t>(input.size()));
}

}  // namespace rivelt::bench
