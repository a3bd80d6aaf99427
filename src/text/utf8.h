// Texts and UTF-8, there and back without loss: a byte that belongs to no character becomes a lone
// low surrogate U+DC80..U+DCFF and returns as that byte. So a file name that is not valid UTF-8
// survives.

#pragma once

#include <string>
#include <string_view>

#include "text/text.h"

namespace rivelt {

Text From_Utf8(std::string_view bytes);

// Any other surrogate without its partner becomes U+FFFD.
std::string To_Utf8(Text_View text);

}  // namespace rivelt
