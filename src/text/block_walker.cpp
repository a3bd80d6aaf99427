#include "text/block_walker.h"

#include <cstddef>

#include "text/forward_search.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

constexpr bool Is_Bracket(char16_t unit) {
  // One test for both brackets, whose codes differ in the last bit alone.
  return (unit | 1) == u')';
}

struct Open_Block {
  Position* Close;
  Position Depth;
};

void Close_Blocks(Text_View text, std::vector<Block>& blocks) {
  std::vector<Open_Block> open;
  auto next = blocks.begin();
  Position depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!Is_Bracket(text[i])) continue;
    const Position position = static_cast<Position>(i + 1);
    if (text[i] == u'(') {
      ++depth;
      if (next == blocks.end() || next->Open != position) continue;
      open.push_back({&next->Close, depth});
      ++next;
    } else {
      if (!open.empty() && open.back().Depth == depth) {
        *open.back().Close = position;
        open.pop_back();
      }
      --depth;
    }
  }
}

}  // namespace

Position Block_Walk::Over(Text_View stretch) {
  Position depth = Depth;
  for (std::size_t i = 0; i < stretch.size(); ++i) {
    if (!Is_Bracket(stretch[i])) continue;
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

std::vector<Block> Find_Blocks(Text_View text, Text_View keyword) {
  std::vector<Block> blocks;
  Position start = 1;
  while (const Position position = Find_Text(start, text, keyword)) {
    const Position open = Find_Text(position, text, u"(");
    blocks.push_back({position, open, 0});
    if (open == 0) break;
    start = open + 1;
  }
  Close_Blocks(text, blocks);
  return blocks;
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
