#include "text/block_walker.h"

#include <cstddef>

#include "text/forward_search.h"
#include "text/primitives.h"

namespace rivelt {

Position Block_Walk::Over(Text_View stretch) {
  Position depth = Depth;
  for (std::size_t i = 0; i < stretch.size(); ++i) {
    // One test for both brackets, whose codes differ in the last bit alone.
    if ((stretch[i] | 1) != u')') continue;
    depth += stretch[i] == u'(' ? 1 : -1;
    if (depth == 0) return static_cast<Position>(i + 1);
  }
  Depth = depth;
  return 0;
}

Position Walk_Block(Text_View text, Position open) {
  const Position found = Block_Walk().Over(Mid_Text(text, open + 1));
  if (found == 0) throw Failure();
  return open + found;
}

std::vector<Position> Unbalanced_Brackets(Text_View text) {
  std::vector<Position> open;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'(') open.push_back(static_cast<Position>(i + 1));
    if (text[i] == u')' && !open.empty()) open.pop_back();
  }
  return open;
}

Text Strip_Blocks(Text_View text, Text_View tag) {
  Text_View rest = text;
  Forward_Search opens(text, u"(");
  Text output;
  output.reserve(text.size());
  while (const Position position = Find_Text(1, rest, tag)) {
    output += Left_Text(rest, position - 1);
    const Position found = opens.Find(Mid_Text(rest, position));
    const Position open = found == 0 ? 0 : position + found - 1;
    const Position close = Walk_Block(rest, open);
    rest = Mid_Text(rest, close + 1);
    // Where no "(" follows the tag, the walk ends on a ")" in front of it and the same text is
    // copied once more. A damaged file could grow without bound that way.
    if (output.size() > 2 * text.size()) throw Failure();
  }
  output += rest;
  return output;
}

}  // namespace rivelt
