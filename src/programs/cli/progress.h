// How far a walk over the files of a folder has come, seen from outside of the procedures.

#pragma once

#include "programs/cli/watched_files.h"

namespace rivelt {

struct Progress : File_Watcher {
  void Folder_Listed(Long count) override {
    Opened = 0;
    Total = count;
  }
  void File_Opened() override { ++Opened; }

  Long Opened = 0;  // files of the folder listed last that have been opened
  Long Total = 0;   // files in it
};

}  // namespace rivelt
