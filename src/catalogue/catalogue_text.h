// The passes over the text of the global catalogue. A text handed on from one to the next is what
// the former has left unread.

#pragma once

#include <functional>
#include <optional>

#include "text/text.h"

namespace rivelt {

// The text between "Build" with one more character and the next ")"; nothing without a "Build".
// Failure: there is no room for it.
std::optional<Text_View> Catalogue_Version(Text_View text);

// The text without its comment blocks. Failure: one of them is never closed, or the result grows
// beyond the limit of Strip_Blocks.
Text Without_Comments(Text_View text);

// The number after the keyword and its "("; rest then begins at the number. Failure: no such
// keyword, or the number does not fit a Long.
Long Read_Count(Text_View& rest, Text_View keyword);

// Hands the id and file name of each shape record, in the order of the file, to add_shape. A record
// whose "FileName" is not in its first bracket is skipped. Failure: a name without an end, names
// that are nested and together longer than the text and than Longest_Result, an id that does not
// fit a Long.
void Read_Shapes(Text_View rest, const std::function<void(Long id, Text_View name)>& add_shape);

}  // namespace rivelt
