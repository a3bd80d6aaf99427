#pragma once

#include <functional>

#include "text/text.h"

namespace rivelt {

// Takes a line for the message log, without its line end.
using Log_Line = std::function<void(Text_View)>;

}  // namespace rivelt
