// What of a text goes into a box of one line.

#pragma once

#include "text/text.h"

namespace rivelt {

// What a user pastes into such a box ends at the first line end, whichever kind it is.
inline Text_View First_Line(Text_View text) {
  return text.substr(0, text.find_first_of(u"\r\n"));
}

}  // namespace rivelt
