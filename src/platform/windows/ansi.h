// The ANSI code page of the system.

#pragma once

#include <string>
#include <string_view>

#include "text/text.h"

namespace rivelt {

// A character that it lacks becomes "?".
std::string To_Ansi(Text_View text);
Text From_Ansi(std::string_view bytes);

}  // namespace rivelt
