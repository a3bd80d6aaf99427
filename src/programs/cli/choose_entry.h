#pragma once

#include <optional>
#include <string>

#include "text/text.h"
#include "window/sorted_list.h"

namespace rivelt {

// The entry that a person means by wanted: exactly that one, else the one that differs from it in
// letter case only. Nothing if there is none or several differ so.
std::optional<Text> Choose_Entry(const Sorted_List& list, Text_View wanted);

// A few entries that are written most like wanted, each on a line of its own, indented.
std::string Closest_Entries(const Sorted_List& list, Text_View wanted);

}  // namespace rivelt
