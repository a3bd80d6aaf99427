#pragma once

#include <memory>

#include "form/frm_main.h"

namespace rivelt {

// The entry of the program: creates the form, shows the window and initialises the form. From then
// on the window's events drive the program. An Event_Gate calls it and keeps the form.
std::unique_ptr<frmMain> Main(Window& window, Registry& registry,
                              Create_File_System_Object create_object);

}  // namespace rivelt
