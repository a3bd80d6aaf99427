// What a text is: a sequence of 16-bit code units with an explicit length.

#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace rivelt {

using Text = std::u16string;
using Text_View = std::u16string_view;

// A place in a text, counted in code units from 1. 0 is the answer of a search that found nothing
// and never a valid start. No text is longer than a position can count.
using Position = std::int32_t;

// The two kinds of number: what is read from files, and what is counted.
using Double = double;
using Long = std::int32_t;

// Where a damaged text makes a result grow with the square of its length, the result may have this
// many units, 64 MB, or the length of the text if that is more.
inline constexpr std::size_t Longest_Result = std::size_t{1} << 25;

inline constexpr char16_t Double_Quote = 34;
inline constexpr Text_View Line_End = u"\r\n";

// The one run-time failure. It can carry a reason in words for a person, which no handler looks at.
// A handler catches std::exception, so that running out of memory ends in it as well.
class Failure : public std::exception {
 public:
  Failure() = default;

  // place: where in a text it came up, and before: an earlier place that the reason ends with. Both
  // serve Naming_Lines alone, and only while the text is there.
  explicit Failure(Text reason, const char16_t* place = nullptr, const char16_t* before = nullptr)
      : In_Words(std::move(reason)), At(place), Before(before) {}

  const char* what() const noexcept override { return "Failure"; }

  // Empty if it has none.
  const Text& Reason() const { return In_Words; }

  const char16_t* Place() const { return At; }
  const char16_t* Earlier_Place() const { return Before; }

 private:
  Text In_Words;
  const char16_t* At = nullptr;
  const char16_t* Before = nullptr;
};

}  // namespace rivelt
