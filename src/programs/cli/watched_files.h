// The file classes around others of their kind: every operation is announced to a watcher and
// passed on.

#pragma once

#include <memory>

#include "system/file_service.h"

namespace rivelt {

class File_Watcher {
 public:
  virtual ~File_Watcher() = default;

  // An operation on the disk is about to begin. What this throws comes out of it, and it is not
  // begun.
  virtual void Before_Operation() {}

  // A folder with so many files is about to be walked.
  virtual void Folder_Listed(Long /*count*/) {}

  // One of the files of a folder is about to be read.
  virtual void File_Opened() {}
};

// The watcher must outlive the files.
std::unique_ptr<File_System_Object> Watched_Files(std::unique_ptr<File_System_Object> files,
                                                  File_Watcher& watcher);

}  // namespace rivelt
