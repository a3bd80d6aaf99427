#include "catalogue/catalogue.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "text/block_walker.h"
#include "text/forward_search.h"
#include "text/primitives.h"
#include "text/reasons.h"
#include "text/token_reader.h"

namespace rivelt {
namespace {

// Where in the text the unit at that place in the text without blocks comes from.
const char16_t* Place_Before_Stripping(Text_View text, Text_View tag, std::size_t place) {
  Forward_Search opens(text, u"(");
  while (const Position hit = Find_Text(1, text, tag)) {
    const auto kept = static_cast<std::size_t>(hit) - 1;
    if (place < kept) break;
    place -= kept;
    const Position found = opens.Find(Mid_Text(text, hit));
    text = Mid_Text(text, Walk_Block(text, found == 0 ? 0 : hit + found - 1) + 1);
  }
  return text.data() + std::min(place, text.size());
}

// Does the step with the text without the blocks of the tag.
template <class Step>
void Without_Blocks(Text_View text, Text_View tag, const Step& step) {
  const Text stripped = Strip_Blocks(text, tag);
  try {
    step(Text_View(stripped));
  } catch (const Failure& failure) {
    if (failure.Place() == nullptr) throw;
    const std::ptrdiff_t place = failure.Place() - stripped.data();
    throw Failure(failure.Reason(),
                  Place_Before_Stripping(text, tag, static_cast<std::size_t>(place)));
  }
}

// The text after the "(" at position; all of it if position is 0, which means that there was none.
Text_View After(Text_View text, Position position) {
  return Mid_Text(text, position + 1);
}

// The number after the keyword and its "("; rest then begins at the number.
Long Read_Count(Text_View& rest, Text_View keyword) {
  Position position = Find_Text(1, rest, keyword);
  if (position == 0) throw Failure(Concatenate({u"no \"", keyword, u"\""}), rest.data());
  position = Find_Text(position, rest, u"(");
  rest = After(rest, position);
  return Round_Long(Text_Value(rest), rest.data());
}

void Read_Shapes(Text_View rest, const std::function<void(Long id, Text_View name)>& add_shape) {
  Forward_Search closes(rest, u")");
  Forward_Search names(rest, u"FileName");
  const std::size_t longest_names = std::max(rest.size(), Longest_Result);
  std::size_t names_length = 0;
  Position position = Find_Text(1, rest, u"TrackShape");
  while (position > 0) {
    position = Find_Text(position, rest, u"(");
    if (position == 0) return;  // the keyword has no record, and nothing can follow it
    rest = After(rest, position);
    const Double id = Text_Value(rest);
    const Position first_close = closes.Find(rest);
    position = names.Find(rest);
    if (position > 0 && position < first_close) {
      const Text_View keyword = Mid_Text(rest, position, 8);
      rest = After(rest, Find_Text(position, rest, u"("));
      position = closes.Find(rest);
      if (position == 0) throw Failure(u"no \")\" after the \"FileName\"", keyword.data());
      const Text_View written_name = Left_Text(rest, position - 1);
      // In a damaged file every record can have the whole rest for a name.
      names_length += written_name.size();
      if (names_length > longest_names) throw Failure(u"surplus brackets", keyword.data());
      const Text name = Replace_Text(written_name, {&Double_Quote, 1}, u"");
      add_shape(Round_Long(id, keyword.data()), Trim_Text(name));
    }
    position = Find_Text(1, rest, u"TrackShape");
  }
}

// The numbers after the keyword and its "(". "TrackSections (" is another keyword.
Number_Set Numbers_After(Text_View text, Text_View keyword) {
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
  return Number_Set(numbers);
}

}  // namespace

std::optional<Text_View> Catalogue_Version(Text_View text) {
  const Position build = Find_Text(1, text, u"Build");
  if (build == 0) return std::nullopt;
  return Naming_Lines(text, [&] {
    const Position close = Find_After(Mid_Text(text, build, 5), build, text, u")");
    // The keyword's five letters, and one more character that is not looked at.
    return std::optional(Mid_Text(text, build + 6, close - build - 6));
  });
}

Catalogue Read_Catalogue(Text_View text,
                         const std::function<void(Long id, Text_View name)>& add_shape) {
  Catalogue catalogue;
  const auto read = [&](Text_View stripped) {
    Text_View rest = stripped;
    catalogue.Reserved_Sections = Read_Count(rest, u"TrackSections");
    catalogue.Reserved_Shapes = Read_Count(rest, u"TrackShapes");
    Read_Shapes(rest, add_shape);
    catalogue.Declared = {Numbers_After(stripped, u"TrackSection"),
                          Numbers_After(stripped, u"TrackShape")};
  };
  Naming_Lines(text, [&] {
    Without_Blocks(text, u"_SKIP",
                   [&](Text_View unskipped) { Without_Blocks(unskipped, u"_INFO", read); });
  });
  return catalogue;
}

}  // namespace rivelt
