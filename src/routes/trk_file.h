#pragma once

#include <optional>
#include <vector>

#include "system/file_service.h"
#include "text/text.h"

namespace rivelt {

// The text of the first .trk file in the folder of a route; nothing if there is none. Failure: it
// cannot be read.
std::optional<Text> Trk_Text(const Folder& route_folder);

// The names of a route's track database and road database, by its .trk file. None if it names none.
// Failure: the .trk file cannot be read.
std::vector<Text> Database_Names(const Folder& route_folder);

}  // namespace rivelt
