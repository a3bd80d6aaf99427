// Binary and compressed files. This writer shares nothing with the reader that it tests.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/text.h"

namespace rivelt::sample {

// The binary file for the text of a world file or database, in which blanks or line ends are around
// every word and bracket. A block that nothing closes ends where the text does. Failure: a block
// that is not known, or a value that does not belong.
std::string Binary_File(Text_View text);

// The compressed form of a binary file.
std::string Compressed_File(std::string_view binary);

// A text of any blocks that a file can have: each choice is a block, the end of one, or what one
// holds. All of it is written as the simulator would.
Text Invented_Blocks(bool is_world, Text_View choices, std::size_t deepest);

}  // namespace rivelt::sample
