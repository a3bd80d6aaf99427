#pragma once

#include <optional>

#include "app/file_service.h"
#include "text/text.h"

namespace rivelt {

// The text of the first .trk file in the folder of a route; nothing if there is none. Failure: it
// cannot be read.
std::optional<Text> Trk_Text(const Folder& route_folder);

}  // namespace rivelt
