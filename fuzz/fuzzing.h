// What the fuzzers share. An input is one byte of choices and a text; each fuzzer exits where what
// must hold does not.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "convert/whole_route.h"
#include "convert/world_passes.h"
#include "text/rewritten_text.h"
#include "text/text.h"

namespace rivelt::fuzzing {

// Exits with the message and status 1 unless it holds.
void Require(bool holds, const char* message);

struct Input {
  // The first byte, which picks offsets and tables.
  unsigned Choice = 0;
  // A byte below 128 is a unit of its own, any other one together with its neighbour.
  Text Units;
  // Whether the first byte is the sum of all others. Seldom by chance, and no mutation keeps it so.
  bool Is_Long = false;
};

Input Read_Input(const std::uint8_t* data, std::size_t size);

// A few offsets, the extremes among them.
Long Offset(unsigned choice);

// What a pass gave and logged; of one that failed, only what it logged.
struct Outcome {
  bool Failed = false;
  Text Output;
  std::vector<Long> Numbers;
  std::vector<Text> Lines;
  bool operator==(const Outcome&) const = default;
};

// text is what the pass has read.
void Put(const Passed_World& passed, Text_View text, Outcome& outcome);

// A pass over a text, which puts its results into the outcome and hands its lines to the log.
using Pass = std::function<void(Text_View, Outcome&, const Log_Line&)>;

Outcome Outcome_Of(const Pass& pass, Text_View text);

// What the pass makes of the input. Requires that it keeps to its time.
Outcome Timed_Outcome(const Input& input, const Pass& pass);

// Requires that the pass keeps to its time and that its naive twin makes the same of the input, and
// of what comes out.
void Require_Twins(const Input& input, const Pass& pass, const Pass& naive);

// Replaces each number of the text that moves in the output.
using Move_Numbers = std::function<void(Text_View, Rewritten_Text& output)>;
using Renumbering = std::function<Renumbered_File(Text_View, Purpose)>;

// Requires that the pass keeps to its time, that it counts the same whether it converts or not, and
// that it writes the input with the numbers moved, if it does not refuse it.
void Require_Moved(const Input& input, const Move_Numbers& move, const Renumbering& pass);

// For a long input: half a million units, which repeat the part of it before the first "|" and end
// in the part after that, must not take the pass more than two seconds.
void Require_Speed(const Input& input, const std::function<void(Text_View)>& pass);

}  // namespace rivelt::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
