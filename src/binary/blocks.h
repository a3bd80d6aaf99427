// The blocks of a binary file.

#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <unordered_map>

#include "text/text.h"

namespace rivelt {

inline constexpr std::size_t Longest_Text = std::numeric_limits<Position>::max();

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

// By their numbers, which can mean different blocks in files of different kinds.
using Block_Kinds = std::unordered_map<std::uint32_t, Block_Kind>;
const Block_Kinds& Kinds_In(File_Kind file);

// Appends the text of the one block that the bytes of an uncompressed file hold from start up to
// their end. Failure: as for Text_Of_Binary.
Text Read_Blocks(std::string_view bytes, std::size_t start, File_Kind file, Text output);

// A failure that names the byte of the file that it is about.
Failure Unreadable_At(std::size_t byte, Text_View reason);

}  // namespace rivelt
