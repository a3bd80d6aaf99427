#pragma once

#include "form/open_installation.h"
#include "window/window.h"

namespace rivelt {

// What the entry of a backup in the form's menu does: asks, makes the picked route what it was
// before the update of that time, and lists the files. A failure is reported in a message box.
void Restore_From_Menu(Window& window, Open_Installation& installation, const Text& time);

}  // namespace rivelt
