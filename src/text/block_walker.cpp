#include "text/block_walker.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "text/forward_search.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

constexpr std::size_t Chunk = 64;

// A bit for every bracket among the units of a chunk. No branch depends on the text, so that the
// compiler compares many units at a time.
std::uint64_t Brackets_Of(const char16_t* at) {
  std::array<std::uint8_t, Chunk> is_bracket;
  for (std::size_t i = 0; i < Chunk; ++i) {
    // One test for both brackets, whose codes differ in the last bit alone.
    is_bracket[i] = (at[i] | 1) == u')' ? 1 : 0;
  }
  std::uint64_t brackets = 0;
  for (std::size_t i = 0; i < Chunk; i += 8) {
    std::uint64_t eight = 0;
    for (std::size_t j = 0; j < 8; ++j) eight |= std::uint64_t{is_bracket[i + j]} << (8 * j);
    // The product gathers the last bits of the eight bytes in its first byte.
    brackets |= ((eight * 0x0102040810204080) >> 56) << i;
  }
  return brackets;
}

struct Open_Block {
  Block* Of;
  Block_Walk Walk;
};

// Only the stretches inside the blocks are walked, each of them once: the walk over a block halts
// where another one opens, and goes on after that one's end. Of blocks that share a "(", the first
// one is closed here.
void Close_First_Blocks(Text_View text, std::vector<Block>& blocks) {
  std::vector<Open_Block> open;
  Position done = 0;
  for (auto next = blocks.begin();;) {
    const bool is_last = next == blocks.end() || next->Open == 0;
    const Position end = is_last ? static_cast<Position>(text.size()) : next->Open - 1;
    if (!open.empty()) {
      const Position found = open.back().Walk.Over(Mid_Text(text, done + 1, end - done));
      if (found != 0) {
        done += found;
        open.back().Of->Close = done;
        open.pop_back();
        continue;
      }
    }
    if (is_last) return;
    open.push_back({&*next, {}});
    done = next->Open;
    while (next != blocks.end() && next->Open == done) ++next;
  }
}

void Close_Blocks(Text_View text, std::vector<Block>& blocks) {
  Close_First_Blocks(text, blocks);
  for (std::size_t i = 1; i < blocks.size(); ++i) {
    if (blocks[i].Open == blocks[i - 1].Open) blocks[i].Close = blocks[i - 1].Close;
  }
}

}  // namespace

Position Block_Walk::Over(Text_View stretch) {
  for (std::size_t i = 0; i < stretch.size(); i += Chunk) {
    std::array<char16_t, Chunk> last = {};
    const Text_View chunk = stretch.substr(i, Chunk);
    if (chunk.size() < Chunk) std::ranges::copy(chunk, last.begin());
    std::uint64_t brackets = Brackets_Of(chunk.size() < Chunk ? last.data() : chunk.data());
    for (; brackets != 0; brackets &= brackets - 1) {
      const auto at = static_cast<std::size_t>(std::countr_zero(brackets));
      Depth += chunk[at] == u'(' ? 1 : -1;
      if (Depth == 0) return static_cast<Position>(i + at + 1);
    }
  }
  return 0;
}

Position Walk_Block(Text_View text, Position open) {
  const Position found = Block_Walk().Over(Mid_Text(text, open + 1));
  if (found == 0) {
    throw Failure(u"no \")\" closes a block", Mid_Text(text, std::max(open, 1)).data());
  }
  return open + found;
}

std::vector<Block> Find_Blocks(Text_View text, Text_View keyword) {
  std::vector<Block> blocks;
  Forward_Search opens(text, u"(");
  Position position = Find_Text(1, text, keyword);
  while (position != 0) {
    const Position found = opens.Find(Mid_Text(text, position));
    blocks.push_back({position, found == 0 ? 0 : position + found - 1, 0});
    position = Find_Text(position + 1, text, keyword);
  }
  Close_Blocks(text, blocks);
  return blocks;
}

Text Strip_Blocks(Text_View text, Text_View tag) {
  Text_View rest = text;
  Forward_Search opens(text, u"(");
  Text output;
  output.reserve(text.size());
  // Where no "(" follows a tag, the walk ends on a ")" before it and the same text is copied once
  // more. A damaged file could grow without bound that way.
  const std::size_t longest = std::max(text.size(), Longest_Result);
  const auto append = [&](Text_View part) {
    if (part.size() > longest - output.size()) throw Failure(u"surplus brackets", part.data());
    output += part;
  };
  while (const Position position = Find_Text(1, rest, tag)) {
    append(Left_Text(rest, position - 1));
    const Position found = opens.Find(Mid_Text(rest, position));
    const Position open = found == 0 ? 0 : position + found - 1;
    const Position close = Walk_Block(rest, open);
    rest = Mid_Text(rest, close + 1);
  }
  append(rest);
  return output;
}

}  // namespace rivelt
