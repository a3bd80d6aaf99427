// A text box of one line.

#pragma once

#include "platform/windows/win32.h"

namespace rivelt {

// Lets the system's control take only the first line of what is pasted: by itself it goes by a line
// feed alone on some systems.
void Paste_First_Line_Only(HWND box);

}  // namespace rivelt
