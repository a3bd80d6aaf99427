#include "fuzzing.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <numeric>

namespace rivelt::fuzzing {

void Require(bool holds, const char* message) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", message);
  std::exit(1);
}

Input Read_Input(const std::uint8_t* data, std::size_t size) {
  Input input;
  if (size == 0) return input;
  input.Choice = data[0];
  for (std::size_t i = 1; i < size; ++i) {
    unsigned unit = data[i];
    if (unit >= 128 && i + 1 < size) unit = (unit - 128) | (unsigned{data[++i]} << 8);
    input.Units += static_cast<char16_t>(unit);
  }
  input.Is_Long = std::accumulate(data + 1, data + size, 0U) % 256 == input.Choice;
  return input;
}

Long Offset(unsigned choice) {
  using Limits = std::numeric_limits<Long>;
  constexpr Long offsets[] = {0, 1, -1, 960, -40000, 1000000000, Limits::max(), Limits::min()};
  return offsets[choice % 8];
}

void Put(const Passed_World& passed, Text_View text, Outcome& outcome) {
  outcome.Output = passed.Output.value_or(Text(text));
  outcome.Numbers = {passed.Count, passed.Corrected, passed.Left};
}

Outcome Outcome_Of(const Pass& pass, Text_View text) {
  Outcome outcome;
  try {
    pass(text, outcome, [&](Text_View line) { outcome.Lines.emplace_back(line); });
  } catch (const Failure&) {
    outcome.Failed = true;
  }
  return outcome;
}

Outcome Timed_Outcome(const Input& input, const Pass& pass) {
  Require_Speed(input, [&](Text_View text) { Outcome_Of(pass, text); });
  return Outcome_Of(pass, input.Units);
}

void Require_Twins(const Input& input, const Pass& pass, const Pass& naive) {
  const Outcome outcome = Timed_Outcome(input, pass);
  Require(outcome == Outcome_Of(naive, input.Units), "it is as the naive pass");
  const bool agree = Outcome_Of(pass, outcome.Output) == Outcome_Of(naive, outcome.Output);
  Require(agree, "so it is on its own output");
}

void Require_Moved(const Input& input, const Move_Numbers& move, const Renumbering& pass) {
  const auto run = [&](Purpose purpose) -> Pass {
    return [&pass, purpose](Text_View text, Outcome& outcome, const Log_Line&) {
      const Renumbered_File file = pass(text, purpose);
      outcome.Output = file.Output.value_or(Text());
      outcome.Numbers = {file.Section_Count, file.Shape_Count, file.Taken_Count, file.Shared_Count};
    };
  };
  const Outcome converted = Timed_Outcome(input, run(Purpose::Convert));
  const Outcome counted = Outcome_Of(run(Purpose::Count), input.Units);
  Require(counted.Numbers == converted.Numbers && counted.Output.empty(), "it counts the same");
  if (converted.Failed) return;
  const Outcome expected = Outcome_Of(
      [&](Text_View text, Outcome& outcome, const Log_Line&) {
        Rewritten_Text output(text);
        move(text, output);
        outcome.Output = output.Finish().value_or(Text());
      },
      input.Units);
  Require(expected.Output == converted.Output, "only its numbers move");
}

void Require_Speed(const Input& input, const std::function<void(Text_View)>& pass) {
  constexpr std::size_t length = 1 << 19;
  constexpr int most_seconds = 2;
  if (!input.Is_Long || input.Units.empty()) return;
  const std::size_t bar = input.Units.find(u'|');
  const Text line = bar == 0 ? u"|" : input.Units.substr(0, bar);
  Text text;
  text.reserve(length + input.Units.size());
  while (text.size() + line.size() <= length) text += line;
  if (bar != Text::npos) text += input.Units.substr(bar + 1);
  const std::clock_t start = std::clock();
  try {
    pass(text);
  } catch (const Failure&) {
    text.clear();
  }
  Require(std::clock() - start < most_seconds * CLOCKS_PER_SEC, "the time grows with the text");
}

}  // namespace rivelt::fuzzing
