// Texts and UTF-8. A byte that belongs to no character becomes a lone low surrogate U+DC80..U+DCFF,
// so that a file name that is not valid UTF-8 survives.

#pragma once

#include <string>
#include <string_view>

#include "text/text.h"

namespace rivelt {

Text From_Utf8(std::string_view bytes);

// For people and files of text: always valid. A surrogate without its partner becomes U+FFFD.
std::string To_Utf8(Text_View text);

// For file names and other bytes that came through From_Utf8: gives those bytes back. Any other
// surrogate without its partner becomes U+FFFD.
std::string To_Original_Bytes(Text_View text);

}  // namespace rivelt
