// Reads compressed and binary files of a route as texts. A world file or a track or road database
// is one of:
//   a UTF-16 text, which needs nothing from here;
//   a binary file: a header in 8-bit characters, then blocks of values or, rarely, a UTF-8 text;
//   a compressed file: the content of a binary file as a zlib stream.
//
// To read a file of any form once:
//
//   Text text = file.OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
//   if (Is_Binary(text)) text = Text_Of_Binary(text, file.State().Size);

#pragma once

#include <cstdint>
#include <string_view>

#include "text/text.h"

namespace rivelt {

// Whether a file is compressed or binary, by its first bytes. read is what its stream returned.
bool Is_Binary(Text_View read);

// The text of a compressed or binary file, in the layout of the simulator's own tools. Failure,
// with a reason that gives the byte of the uncompressed file and the block: a block that is
// unknown, or whose size does not fit its content or its parent; compressed data that does not have
// the size in the header (a missing checksum is accepted); an infinite number; invalid UTF-8; a
// text of 2^31 units or more.
Text Text_Of_Binary(std::string_view bytes);

// The same from what the file's stream returned, which pads an odd last byte, and the file's size.
Text Text_Of_Binary(Text_View read, std::uint64_t file_size);

// The size in bytes of a binary file, or of a compressed file once uncompressed, as its header
// gives it; 0 for any other file. The text takes about three times as much.
std::uint64_t Uncompressed_Size(Text_View read, std::uint64_t file_size);

}  // namespace rivelt
