#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "system/file_service.h"
#include "text/text.h"

namespace rivelt {

// The text of the first .trk file in the folder of a route; nothing if there is none. Failure: it
// cannot be read.
std::optional<Text> Trk_Text(const Folder& route_folder);

// A route's track database and, if there is one, its road database. The track database is the one
// that the .trk file names or, if that one is not there, the only one in the folder; there is no
// other database if there are none or several. Failure: the folder or the .trk file cannot be read.
std::vector<std::unique_ptr<File>> Track_Databases(File_System_Object& files,
                                                   const Text& route_path);

}  // namespace rivelt
