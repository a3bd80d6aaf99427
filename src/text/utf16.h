// Texts and the bytes of UTF-16 files. Files are written with the mark FF FE and little-endian
// units. When a file is read, FE FF says that it is big-endian, either mark is dropped, and a file
// without one is little-endian. An odd last byte is a unit of its own, as its low half.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/text.h"

namespace rivelt {

inline constexpr std::size_t Unit_Size = sizeof(char16_t);
inline constexpr std::string_view Utf16_Mark = "\xFF\xFE";

// The bytes of a file in the units that they are read into. The first unit is kept apart: it is a
// mark as a rule, so that the rest need not be shifted.
struct Utf16_Content {
  char16_t First = 0;
  Text Rest;             // may be longer than what is read into it
  std::size_t Size = 0;  // in bytes
};

// The text of a whole file, in the memory that Rest has.
Text Decode_Utf16(Utf16_Content content);
Text From_Utf16(std::string_view bytes);

// The bytes of the text where it is, without a mark.
inline std::string_view Bytes_Of(Text_View text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * Unit_Size};
}

// The bytes of a whole file.
std::string To_Utf16(Text_View text);

}  // namespace rivelt
