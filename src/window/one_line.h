// What a text box of one line keeps of a text that came into it.

#pragma once

#include <cstddef>

#include "text/text.h"

namespace rivelt {

// What is pasted ends at its first line end, of whichever kind. caret is where the new part ends; a
// text without one in front of it, as a program sets it, is new up to its end. False: no line end.
inline bool Cut_To_One_Line(Text& text, std::size_t& caret) {
  const std::size_t line_end = text.find_first_of(u"\r\n");
  if (line_end == Text::npos) return false;
  text.erase(line_end, caret > line_end ? caret - line_end : Text::npos);
  caret = line_end;
  return true;
}

}  // namespace rivelt
