#include <benchmark/benchmark.h>

#include <memory>

#include "catalogue/catalogue.h"
#include "platform/memory/memory_files.h"
#include "platform/memory/memory_window.h"
#include "repeated.h"
#include "sample/random_source.h"
#include "sample/track.h"
#include "system/fixed_registry.h"
#include "text/block_walker.h"
#include "text/primitives.h"

namespace rivelt::bench {
namespace {

Text Realistic_Catalogue(Long shapes) {
  return sample::Global_Catalogue(sample::Invent_Shapes(shapes), sample::Random_Source(1));
}

// The whole start-up of the program, in which nothing but the catalogue takes time.
void Read_Global(benchmark::State& state) {
  const Text catalogue = Realistic_Catalogue(static_cast<Long>(state.range(0)));
  Memory_Disk disk;
  disk.Put_Folder(u"D:\\routes");
  disk.Put_File(u"D:\\global\\tsection.dat", catalogue);
  Fixed_Registry registry("D:");
  Time_Checked(state, catalogue, [&] {
    Memory_Window window;
    window.Start(registry, [&] { return Memory_Files(disk); });
    return Find_Text(1, window.Log(), u"Select a route above") != 0 &&
           window.List(cmbTracks(0)).Find(u"A1t100mStrt.s").has_value();
  });
}
BENCHMARK(Read_Global)
    ->RangeMultiplier(2)
    ->Range(5000, 40000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

void Read_Catalogue_Of_A_Real_File(benchmark::State& state) {
  const auto shapes = sample::Invent_Shapes(static_cast<Long>(state.range(0)));
  Long named = 0;
  for (const auto& shape : shapes) {
    named += shape.Kind == sample::Shape::Record::Name_Comes_Late ? 0 : 1;
  }
  const Text text = sample::Global_Catalogue(shapes, sample::Random_Source(1));
  Time_Checked(state, text, [&] {
    Long added = 0;
    Read_Catalogue(text, [&](Long, Text_View) { ++added; });
    return added == named;
  });
}
BENCHMARK(Read_Catalogue_Of_A_Real_File)
    ->RangeMultiplier(2)
    ->Range(5000, 40000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

// Each line leaves its last part.
void Strip_Blocks_Of(benchmark::State& state, Text_View line, std::size_t remaining) {
  const Text text = Repeated(line, static_cast<std::size_t>(state.range(0)));
  const std::size_t lines = text.size() / line.size();
  Time_Checked(state, text,
               [&] { return Strip_Blocks(text, u"_SKIP").size() == lines * remaining; });
}
BENCHMARK_CAPTURE(Strip_Blocks_Of, no_comments, u"FileName ( A1t100mStrt.s )\r\n", 28)
    ->Apply(Growing_Sizes);
BENCHMARK_CAPTURE(Strip_Blocks_Of, a_comment_on_every_line, u"_SKIP ( a ( b ) )\r\n", 2)
    ->Apply(Growing_Sizes);

}  // namespace
}  // namespace rivelt::bench
