#include "sample/text_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

namespace rivelt::sample {

Text Digits(double number) {
  std::array<char, 32> digits;
  const auto [end, error] =
      std::to_chars(digits.begin(), digits.end(), number, std::chars_format::general, 10);
  return Text(digits.begin(), end);
}

Text File_Text(Text_View kind, Text_View records) {
  Text lines = Joined(u"SIMISA@@@@@@@@@@JINX0", kind, u"______", Line_End);
  std::vector<bool> has_lines = {true};  // for each record that is open
  for (std::size_t start = 1, end = 0; start < records.size(); start = end + 1) {
    end = std::min(records.find(u' ', start), records.size());
    const Text_View word = records.substr(start, end - start);
    const bool is_keyword = records.substr(end, 2) == u" (";
    const bool is_end = word == u")";
    const bool is_line = is_keyword || (is_end && has_lines.back());
    if (is_end) has_lines.pop_back();
    if (is_keyword) has_lines.back() = true;
    lines += is_line ? Line_End : u" ";
    if (is_line) lines.append(has_lines.size() - 1, u'\t');
    lines += word;
    if (word == u"(") has_lines.push_back(false);
  }
  return lines + Text(Line_End);
}

}  // namespace rivelt::sample
