// The form's menu: the system menu on Windows, the context menu of the form on Linux, where text
// boxes keep their own. Every back end builds it from these, and asks the Event_Gate what it shows.
//
//   Whole route        with a check mark while it is on
//   Restore a backup   a sub-menu, filled as it opens: one entry per backup of the picked route,
//                      named by its time, newest first; grey without any
//
// Both are grey while the program works and after it has stopped.

#pragma once

#include <cstddef>

#include "text/text.h"

namespace rivelt {

inline constexpr Text_View Whole_Route_Caption = u"Whole route";
inline constexpr Text_View Restore_Caption = u"Restore a backup";
inline constexpr std::size_t Most_Restorable = 20;

}  // namespace rivelt
