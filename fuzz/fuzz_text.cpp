// The searches and the numbers on which the passes rest.

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <string>

#include "fuzzing.h"
#include "naive_passes.h"
#include "text/primitives.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

namespace {

// The longest start that is a decimal number, without blanks, as strtod takes it.
std::string Decimal_Start(Text_View text) {
  std::string units;
  for (const char16_t unit : text) {
    if (unit != u' ' && unit != u'\t' && unit != u'\r' && unit != u'\n') {
      units += unit < 128 && unit != 0 ? static_cast<char>(unit) : '!';
    }
  }
  const auto digits = [&](std::size_t from) { return units.find_first_not_of("0123456789", from); };
  units += '!';
  const std::size_t first = units[0] == '+' || units[0] == '-' ? 1 : 0;
  std::size_t end = digits(first);
  const std::size_t fraction_end = units[end] == '.' ? digits(end + 1) : end;
  if (end == first && fraction_end <= end + 1) return "0";
  end = fraction_end;
  if (std::string("eEdD").find(units[end]) != std::string::npos) {
    units[end] = 'e';
    const std::size_t power = units[end + 1] == '+' || units[end + 1] == '-' ? end + 2 : end + 1;
    if (digits(power) > power) end = digits(power);
  }
  return units.substr(0, end);
}

void Check_Number(Text_View text) {
  if (text.find(u'&') != Text_View::npos) return;
  const Double expected = std::strtod(Decimal_Start(text).c_str(), nullptr);
  const Outcome outcome =
      Outcome_Of([&](Outcome&, const Log_Line& take) { take(Number_Text(Text_Value(text))); });
  Require(outcome.Failed == std::isinf(expected), "only a number beyond the range fails");
  if (outcome.Failed) return;
  Require(Text_Value(text) == expected, "a number is read as strtod reads it");
  if (std::fabs(expected) > 1.797e308) return;  // may be beyond the range in 15 digits
  const Text& written = outcome.Lines[0];
  const Double again = Text_Value(written);
  Require(Number_Text(again) == written, "15 digits come out again");
  Require(std::fabs(again - expected) <= std::fabs(expected) * 5e-15, "15 digits are kept");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  const Text& text = input.Units;
  for (const Text_View target : {u"(", u" ", u"e9", u"Name", u"SectionIdx"}) {
    for (Position start = 1; start <= Position(text.size()) + 2; start += 1 + start / 4) {
      Require(Find_Text(start, text, target) == naive::Find_Text(start, text, target),
              "a search finds what the naive one finds");
    }
  }
  Check_Number(text);
  Require(Join_Text(Split_Text(text)) == text, "what is cut is joined again");
  Require_Speed(input, [](Text_View long_text) { Text_Value(long_text); });
  return 0;
}
