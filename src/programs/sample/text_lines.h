// A text in the making, in the form in which the simulator writes its files: lines indented by
// tabs, CR LF behind each.

#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "text/text.h"

namespace rivelt::sample {

class Text_Lines {
 public:
  // Begins the text with the file's first line and an empty one. The kind is the part of the first
  // line that differs between files: "w0t" for a world file.
  explicit Text_Lines(Text_View kind);

  void Line(std::size_t depth, std::initializer_list<Text_View> parts);

  const Text& Whole() const { return Written; }

 private:
  Text Written;
};

// The digits alone, without the blank of Number_Text.
Text Whole_Number(std::int64_t number);

// A number given in units of 10^-digits, without zeros at its end.
Text Decimal(std::int64_t units, int digits);

// At least width digits, filled up with zeros.
Text Filled_Number(std::int64_t number, std::size_t width);

}  // namespace rivelt::sample
