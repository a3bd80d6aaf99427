// The names of the folders of updates: local times, each later than every other of the route.

#pragma once

#include <cstdint>

#include "text/text.h"

namespace rivelt {

// As long as the update has not finished, the name of its folder ends in this.
inline constexpr Text_View Unfinished_Ending = u".unfinished";

// Whether the text is a time as it is written in a name: 2026-11-22 20.15.07.
bool Is_Backup_Time(Text_View text);

// The name of an update's folder without the ending.
Text_View Time_In(Text_View name);

// The local time now, or a second after newest if that is not in the past. newest is empty or of
// the form. Failure: there is no such time.
Text Backup_Time_After(Text_View newest);

// The local time of a count of nanoseconds since 1970, UTC.
Text Backup_Time_Of(std::int64_t nanoseconds);

}  // namespace rivelt
