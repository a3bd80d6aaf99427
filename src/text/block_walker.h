// The walk over nested brackets. A block is a keyword, whatever comes before the first "(" after
// it, and the text up to the ")" that balances that "(". Only these two characters count: a bracket
// inside a quoted name counts like any other.

#pragma once

#include <vector>

#include "text/text.h"

namespace rivelt {

// The walk in steps: one block that is in several stretches of text.
class Block_Walk {
 public:
  // Walks on over a stretch, which at first begins directly after the block's "(". Gives the
  // position in it of the ")" that balances that "(", else 0. Not called again once it has been
  // found.
  Position Over(Text_View stretch);

 private:
  Position Depth = 1;
};

// The position of the ")" that balances the "(" at open. An open of 0 starts the walk at the first
// unit, one bracket deep. Failure: nothing balances it.
Position Walk_Block(Text_View text, Position open);

struct Block {
  Position Keyword;
  Position Open;   // 0: no "(" follows the keyword
  Position Close;  // 0: no ")" balances it
};

// The blocks of a keyword, in any letter case and also inside a longer word, in the order of the
// text, in one go over it. A block may be inside another one. A keyword between another one and
// its "(" begins a block as well, with the same brackets.
std::vector<Block> Find_Blocks(Text_View text, Text_View keyword);

// The text without any block whose keyword is tag, in any letter case and also inside a longer
// word. Blanks and line ends around a block stay. Failure: a block that is never closed, or a
// result that is longer than the text and than Longest_Result, which surplus brackets can cause.
Text Strip_Blocks(Text_View text, Text_View tag);

}  // namespace rivelt
