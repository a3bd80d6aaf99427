#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>

#include "catalogue/catalogue_text.h"
#include "platform/memory/fixed_registry.h"
#include "platform/memory/memory_files.h"
#include "platform/memory/memory_window.h"
#include "sample/random_source.h"
#include "sample/track.h"
#include "repeated.h"
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
    window.Start(registry, [&] { return std::make_unique<Memory_Files>(disk); });
    return Find_Text(1, window.Log(), u"Select a route above") != 0 &&
           window.List(cmbTracks(0)).Find(u"A1t100mStrt.s").has_value();
  });
}
BENCHMARK(Read_Global)
    ->RangeMultiplier(2)
    ->Range(5000, 40000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

void Read_Shapes_Of_A_Real_File(benchmark::State& state) {
  const auto shapes = sample::Invent_Shapes(static_cast<Long>(state.range(0)));
  Long named = 0;
  for (const auto& shape : shapes) {
    named += shape.Kind == sample::Shape::Record::Name_Comes_Late ? 0 : 1;
  }
  const Text stripped =
      Without_Comments(sample::Global_Catalogue(shapes, sample::Random_Source(1)));
  Text_View records = stripped;
  Read_Count(records, u"TrackSections");
  Read_Count(records, u"TrackShapes");
  Time_Checked(state, records, [&] {
    Long added = 0;
    Read_Shapes(records, [&](Long, Text_View) { ++added; });
    return added == named;
  });
}
BENCHMARK(Read_Shapes_Of_A_Real_File)
    ->RangeMultiplier(2)
    ->Range(5000, 40000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

// Records of which none has a name: 200,000 of them fill a text of a few million units.
void Read_Shapes_Without_Names(benchmark::State& state, Text_View record, Text_View tail) {
  const auto records = static_cast<std::size_t>(state.range(0));
  const Text text = Repeated(record, records * record.size(), tail);
  Time_Checked(state, text, [&] {
    Long added = 0;
    Read_Shapes(text, [&](Long, Text_View) { ++added; });
    return added == 0;
  });
}

void Numbers_Of_Records(benchmark::internal::Benchmark* a_case) {
  a_case->RangeMultiplier(2)
      ->Range(25'000, 200'000)
      ->Complexity(benchmark::oN)
      ->Unit(benchmark::kMillisecond);
}
BENCHMARK_CAPTURE(Read_Shapes_Without_Names, closed, u"TrackShape ( 7 )\r\n", u"")
    ->Apply(Numbers_Of_Records);
BENCHMARK_CAPTURE(Read_Shapes_Without_Names, never_closed, u"TrackShape ( 7\r\n", u"")
    ->Apply(Numbers_Of_Records);
BENCHMARK_CAPTURE(Read_Shapes_Without_Names, closed_at_the_end, u"TrackShape ( 7\r\n", u")")
    ->Apply(Numbers_Of_Records);
BENCHMARK_CAPTURE(Read_Shapes_Without_Names, name_behind_all, u"TrackShape ( 7 )\r\n",
                  u"FileName ( a.s )")
    ->Apply(Numbers_Of_Records);
BENCHMARK_CAPTURE(Read_Shapes_Without_Names, no_bracket, u"TrackShape 7\r\n", u"")
    ->Apply(Numbers_Of_Records);

struct Comments {
  Text_View Line;
  Text_View Tail;
  Text_View What_Remains;  // of a line; nothing: the failure path
};

void Strip_Blocks_Of(benchmark::State& state, Comments comments) {
  const auto units = static_cast<std::size_t>(state.range(0));
  const Text text = Repeated(comments.Line, units, comments.Tail);
  const std::size_t lines = (text.size() - comments.Tail.size()) / comments.Line.size();
  Time_Checked(state, text, [&] {
    if (comments.What_Remains.empty())
      return Ends_In_Failure([&] { Strip_Blocks(text, u"_SKIP"); });
    return Strip_Blocks(text, u"_SKIP").size() ==
           lines * comments.What_Remains.size() + comments.Tail.size();
  });
}
BENCHMARK_CAPTURE(Strip_Blocks_Of, no_comments,
                  Comments{u"FileName ( A1t100mStrt.s )\r\n", u"",
                           u"FileName ( A1t100mStrt.s )\r\n"})
    ->Apply(Growing_Sizes);
BENCHMARK_CAPTURE(Strip_Blocks_Of, a_comment_on_every_line,
                  Comments{u"_SKIP ( a ( b ) )\r\n", u"", u"\r\n"})
    ->Apply(Growing_Sizes);
BENCHMARK_CAPTURE(Strip_Blocks_Of, never_closed, Comments{u"_SKIP (\r\n", u"", u""})
    ->Apply(Growing_Sizes);
BENCHMARK_CAPTURE(Strip_Blocks_Of, no_bracket, Comments{u"_SKIP\r\n", u"", u""})
    ->Apply(Growing_Sizes);
BENCHMARK_CAPTURE(Strip_Blocks_Of, no_opening_bracket, Comments{u"_SKIP )\r\n", u"", u"\r\n"})
    ->Apply(Growing_Sizes);

}  // namespace
}  // namespace rivelt::bench
