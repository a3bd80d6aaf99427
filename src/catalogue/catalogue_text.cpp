#include "catalogue/catalogue_text.h"

#include <algorithm>
#include <cstddef>

#include "text/block_walker.h"
#include "text/forward_search.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

// The text after the "(" at position; all of it if position is 0, which means that there was none.
Text_View Behind(Text_View text, Position position) {
  return Mid_Text(text, position + 1);
}

}  // namespace

std::optional<Text_View> Catalogue_Version(Text_View text) {
  const Position build = Find_Text(1, text, u"Build");
  if (build == 0) return std::nullopt;
  const Position close = Find_Text(build, text, u")");
  // The keyword's five letters, and one more character that is not looked at.
  return Mid_Text(text, build + 6, close - build - 6);
}

Text Without_Comments(Text_View text) {
  Text stripped(text);
  for (const Text_View tag : {u"_SKIP", u"_INFO"}) stripped = Strip_Blocks(stripped, tag);
  return stripped;
}

Long Read_Count(Text_View& rest, Text_View keyword) {
  Position position = Find_Text(1, rest, keyword);
  position = Find_Text(position, rest, u"(");
  rest = Behind(rest, position);
  return Round_Long(Text_Value(rest));
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
    rest = Behind(rest, position);
    const Double id = Text_Value(rest);
    const Position first_close = closes.Find(rest);
    position = names.Find(rest);
    if (position > 0 && position < first_close) {
      position = Find_Text(position, rest, u"(");
      rest = Behind(rest, position);
      position = closes.Find(rest);
      const Text_View written_name = Left_Text(rest, position - 1);
      // In a damaged file every record can have the whole rest for a name.
      names_length += written_name.size();
      if (names_length > longest_names) throw Failure();
      const Text name = Replace_Text(written_name, {&Double_Quote, 1}, u"");
      add_shape(Round_Long(id), Trim_Text(name));
    }
    position = Find_Text(1, rest, u"TrackShape");
  }
}

}  // namespace rivelt
