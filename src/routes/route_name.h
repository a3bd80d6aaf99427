#pragma once

#include "text/text.h"

namespace rivelt {

// The display name of a route from the text of its .trk file: the text between the brackets
// after the first "Name", without double quotes and without blanks at its ends. Failure: there is
// no such place.
Text Route_Display_Name(Text_View trk_text);

}  // namespace rivelt
