#pragma once

#include <cstddef>
#include <string_view>

#include "binary/block_kinds.h"
#include "text/text.h"

namespace rivelt {

// A failure that names the byte of the file that it is about.
Failure Unreadable_At(std::size_t byte, Text_View reason);

// Appends the text of the one block that the bytes of an uncompressed file hold from start up to
// their end. Failure: as for Text_Of_Binary.
Text Read_Blocks(std::string_view bytes, std::size_t start, File_Kind file, Text output);

}  // namespace rivelt
