// The names of the folders that hold backups.

#pragma once

#include <optional>

#include "text/text.h"

namespace rivelt {

inline constexpr Text_View Unfinished_Ending = u".unfinished";

struct Backup_Name {
  Text Route_Folder;
  Text Time;
};

// What the name of a completed backup's folder tells; nothing if it is not of that form.
std::optional<Backup_Name> Read_Backup_Name(Text_View name);

// The local time so many seconds from now, as it stands in a name: 2026-11-22 20.15.07.
Text Backup_Time(int seconds_from_now);

}  // namespace rivelt
