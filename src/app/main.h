#pragma once

#include "app/frm_main.h"

namespace rivelt {

// The entry of the program: creates the form, shows the window and initialises the form. From then
// on the window's events drive the program. The form lives until the process ends or Main runs
// again.
frmMain& Main(Window& window, Registry& registry, Create_File_System_Object create_object);

}  // namespace rivelt
