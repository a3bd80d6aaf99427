// Writes binary and compressed files. To test the reader, it shares no code or table with it.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/text.h"

namespace rivelt::sample {

// The binary form of a world file or database, whose words and brackets have blanks or line ends
// between them. A block without a closing bracket ends with the text. Failure: an unknown block, or
// a value that does not fit.
std::string Binary_File(Text_View text);

// The compressed form of a binary file.
std::string Compressed_File(std::string_view binary);

// The records of a file of arbitrary blocks, for File_Text. Each choice opens a block with values
// or closes one; at most so many are nested.
Text Invented_Blocks(bool is_world, Text_View choices, std::size_t deepest);

}  // namespace rivelt::sample
