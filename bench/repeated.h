// Inputs and outcomes that the cases share.

#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>

#include "text/text.h"

namespace rivelt::bench {

// The sizes, in code units, at which a pass should show that its time grows with its input: up to a
// file of 20 MB.
void Growing_Sizes(benchmark::internal::Benchmark* a_case);

// Copies of the line, none of them cut, as many as fit into so many units, and the tail after
// them.
Text Repeated(Text_View line, std::size_t units, Text_View tail = {});

// A world file of about so many units as the sample program writes it.
Text Realistic_World(std::size_t units);

// A track database of about so many units as the sample program writes it.
Text Realistic_Database(std::size_t units);

// Runs the work, which says whether its result is right, once before the clock starts, then times
// it. A wrong result ends the case with an error.
void Time_Checked(benchmark::State& state, Text_View input, const std::function<bool()>& work);

}  // namespace rivelt::bench
