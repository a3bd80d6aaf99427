// The files on a disk in memory.

#pragma once

#include "platform/files/system_files.h"
#include "platform/memory/memory_disk.h"

namespace rivelt {

class Memory_Files : public System_Files {
 public:
  // The disk must outlive the object and all that it gives but its locks.
  explicit Memory_Files(Memory_Disk& disk);
};

}  // namespace rivelt
