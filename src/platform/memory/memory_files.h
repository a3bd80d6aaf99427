#pragma once

#include <memory>

#include "platform/memory/memory_disk.h"
#include "system/file_service.h"

namespace rivelt {

// The files on a disk in memory, which must outlive them but not their locks.
std::unique_ptr<File_System_Object> Memory_Files(Memory_Disk& disk);

}  // namespace rivelt
