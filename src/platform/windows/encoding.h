// The two encodings of text files.

#pragma once

#include <string>
#include <string_view>

#include "text/text.h"

namespace rivelt {

// Makes a text of the content of a UTF-16 file, which lies in units as its bytes come: the last
// unit holds one byte if their number is odd. What becomes of the mark, Read_Stream::ReadAll
// promises.
void Decode_Utf16(Text& units, bool last_is_odd);

// The text in the ANSI code page; a character that it lacks becomes "?".
std::string To_Ansi(Text_View text);
Text From_Ansi(std::string_view bytes);

}  // namespace rivelt
