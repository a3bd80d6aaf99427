#pragma once

#include <optional>

#include "text/text.h"

namespace rivelt {

// The display name of a route from the text of its .trk file: the text between the brackets
// after the first "Name", without double quotes and without blanks at its ends. Failure: there is
// no such place.
Text Route_Display_Name(Text_View trk_text);

// The name of a route's track database and road database, without their endings, from the text of
// its .trk file: what is between the brackets after the first "FileName" that is a word of its
// own, outside quotation marks and comment blocks. Nothing if there is none, or if it would lead
// out of the route's folder.
std::optional<Text> Trk_Database_Name(Text_View trk_text);

}  // namespace rivelt
