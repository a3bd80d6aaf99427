// The files of a Windows machine.

#pragma once

#include <memory>

#include "system/file_service.h"

namespace rivelt {

// Letter case and links are the system's own business. A file that another program has open for
// writing is not read: half of what it writes would pass for the whole.
std::unique_ptr<File_System_Object> Windows_Files();

}  // namespace rivelt
