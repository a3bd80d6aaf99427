// Text files in the form in which the simulator writes them: lines indented by tabs, CR LF after
// each, UTF-16.

#pragma once

#include <cstddef>
#include <filesystem>
#include <string_view>
#include <type_traits>

#include "text/text.h"

namespace rivelt::sample {

// The first two lines of a file. The kind is the part that differs: "w0t" for a world file.
Text File_Start(Text_View kind);

// In decimal, with at most ten digits.
Text Digits(double number);

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

template <class... Parts>
void Line(Text& lines, std::size_t depth, const Parts&... parts) {
  lines.append(depth, u'\t');
  lines += Joined(parts...);
  lines += Line_End;
}

// Both write a new file, or throw a std::filesystem::filesystem_error that names it.
void Write_Text_File(const std::filesystem::path& path, Text_View text);
void Write_Bytes(const std::filesystem::path& path, std::string_view bytes);

}  // namespace rivelt::sample
