#include <benchmark/benchmark.h>

#include <string>

#include "binary/binary_file.h"
#include "repeated.h"
#include "sample/binary_file.h"

namespace rivelt::bench {
namespace {

// By the size of the text.
void Text_Of_A_World_File(benchmark::State& state, bool is_compressed) {
  const Text text = Realistic_World(static_cast<std::size_t>(state.range(0)));
  std::string file = sample::Binary_File(text);
  if (is_compressed) file = sample::Compressed_File(file);
  Time_Checked(state, text, [&] { return Text_Of_Binary(file) == text; });
}
BENCHMARK_CAPTURE(Text_Of_A_World_File, binary, false)->Apply(Growing_Sizes);
BENCHMARK_CAPTURE(Text_Of_A_World_File, compressed, true)->Apply(Growing_Sizes);

}  // namespace
}  // namespace rivelt::bench
