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

  // The content of a block of this kind, a letter for each part:
  //   u, i  a whole number of 4 bytes, unsigned or signed
  //   x     4 bytes, written as 8 hexadecimal digits
  //   f     a floating-point number of 4 bytes
  //   s     a string: 2 bytes with its length in characters, then UTF-16
  //   b, B  one block; any number of blocks
  //   *     the number before it counts how often the letters after it follow
  //   ?     the letter after it is optional
  Text Holds;
};

// By number. A number can mean different blocks in files of different kinds.
using Block_Kinds = std::unordered_map<std::uint32_t, Block_Kind>;
const Block_Kinds& Kinds_In(File_Kind file);

// Appends the text of the outermost block of an uncompressed file, which begins at start and takes
// the rest of the bytes. Failure: as for Text_Of_Binary.
Text Read_Blocks(std::string_view bytes, std::size_t start, File_Kind file, Text output);

// A failure whose reason names the byte of the uncompressed file.
Failure Unreadable_At(std::size_t byte, Text_View reason);

}  // namespace rivelt
