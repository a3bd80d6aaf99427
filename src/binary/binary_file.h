// Compressed and binary files of a route, read as the texts that they stand for. A world file or a
// track or road database is one of
//   a text in UTF-16, which is no business of this room,
//   a binary file: blocks of values, or (rare) a text in UTF-8, after a head in 8-bit characters,
//   a compressed file: the content of a binary one as a zlib stream.
//
// A file is read once, whichever it is:
//
//   Text text = file.OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
//   if (Is_Binary(text)) text = Text_Of_Binary(text, file.State().Size);

#pragma once

#include <cstdint>
#include <string_view>

#include "system/file_service.h"
#include "text/text.h"

namespace rivelt {

// Whether what a stream read of a file is a compressed or binary file, by its first bytes alone.
bool Is_Binary(Text_View read);

// The text that the bytes of a compressed or binary file stand for, laid out as the simulator's own
// tools do. Nothing is guessed. Failure, with a reason that says at which byte of the uncompressed
// file which block does not fit: a block that is not known or not as large as what it holds, a
// stream that does not give the size in the header (but its checksum may be missing), a number that
// no text can have, a text of 2^31 units or more.
Text Text_Of_Binary(std::string_view bytes);

// The same for what a stream read of a file of so many bytes. The stream fills up an odd last byte.
Text Text_Of_Binary(Text_View read, std::uint64_t file_size);

// The bytes that a compressed or binary file has when it is not compressed, as its header says;
// 0 for any other file. Its text takes about three times as much. Reads the start of the file
// alone.
std::uint64_t Uncompressed_Size(const File& file);

}  // namespace rivelt
