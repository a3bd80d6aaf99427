// How far a walk over the files of a folder has come, seen from outside of the procedures.

#pragma once

#include <memory>

#include "app/file_service.h"

namespace rivelt {

struct Progress {
  Long Opened = 0;  // files of the folder asked last that have been opened
  Long Total = 0;   // files in it
};

// The same files, with the progress kept in progress, which must outlive them.
std::unique_ptr<File_System_Object> Watched_Files(std::unique_ptr<File_System_Object> files,
                                                  Progress& progress);

}  // namespace rivelt
