// Text files as the simulator writes them: lines indented by tabs, CR LF, UTF-16.

#pragma once

#include <type_traits>

#include "text/text.h"

namespace rivelt::sample {

Text Digits(double number);  // at most ten, in decimal

// The parts, texts and numbers, one after the other.
template <class... Parts>
Text Joined(const Parts&... parts) {
  Text text;
  const auto add = [&text]<class Part>(const Part& part) {
    if constexpr (std::is_arithmetic_v<Part>) {
      text += Digits(static_cast<double>(part));
    } else {
      text += Text_View(part);
    }
  };
  (add(parts), ...);
  return text;
}

// Adds the parts to the records of a file, a blank before each.
template <class... Parts>
void Add(Text& records, const Parts&... parts) {
  ((records += Joined(u" ", parts)), ...);
}

// The records of a file, each on a line of its own. The kind is the part in which the first lines
// of files differ: "w0t" for a world file.
Text File_Text(Text_View kind, Text_View records);

}  // namespace rivelt::sample
