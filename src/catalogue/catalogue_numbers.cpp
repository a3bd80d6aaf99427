#include "catalogue/catalogue_numbers.h"

#include <vector>

#include "catalogue/catalogue_text.h"
#include "text/primitives.h"
#include "text/token_reader.h"

namespace rivelt {
namespace {

// The numbers after the keyword and its "(". "TrackSections (" is another keyword.
std::vector<Double> Numbers_After(Text_View text, Text_View keyword) {
  std::vector<Double> numbers;
  Position position = Find_Text(1, text, keyword);
  while (position != 0) {
    position += static_cast<Position>(keyword.size());
    const std::size_t open = text.find_first_not_of(Blanks, static_cast<std::size_t>(position) - 1);
    if (open != Text_View::npos && text[open] == u'(') {
      const Number_Reading reading = Read_Number(text.substr(open + 1));
      if (reading.Has_Digits) numbers.push_back(reading.Value);
    }
    position = Find_Text(position, text, keyword);
  }
  return numbers;
}

}  // namespace

Catalogue_Numbers Read_Catalogue_Numbers(Text_View text) {
  const Text stripped = Without_Comments(Trim_Text(text));
  return {Number_Set(Numbers_After(stripped, u"TrackSection")),
          Number_Set(Numbers_After(stripped, u"TrackShape"))};
}

}  // namespace rivelt
