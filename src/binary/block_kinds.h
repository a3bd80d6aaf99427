// The blocks that a binary file can hold, by their numbers.

#pragma once

#include <cstdint>
#include <unordered_map>

#include "text/text.h"

namespace rivelt {

enum class File_Kind { World, Database };

struct Block_Kind {
  Text Name;

  // What a block of this kind holds, a letter for each:
  //   u, i  a whole number of 4 bytes, unsigned or signed
  //   x     4 bytes, written as 8 hexadecimal digits
  //   f     a number of 4 bytes with a fraction
  //   s     a string: 2 bytes with its length in characters, then UTF-16
  //   b, B  one block; any number of blocks
  //   *     the letters after it, as often as the number before it says
  //   ?     the letter after it, unless the block ends here
  Text Holds;
};

// A number can mean different blocks in files of different kinds.
using Block_Kinds = std::unordered_map<std::uint32_t, Block_Kind>;
const Block_Kinds& Kinds_In(File_Kind file);

}  // namespace rivelt
