// The file classes on a disk in memory.

#pragma once

#include <memory>

#include "platform/memory/memory_disk.h"
#include "system/file_service.h"

namespace rivelt {

class Memory_Files : public File_System_Object {
 public:
  // The disk must outlive the object and all that it gives but its locks.
  explicit Memory_Files(Memory_Disk& disk) : Disk(disk) {}

  std::unique_ptr<File> GetFile(Text_View path) override;
  std::unique_ptr<Folder> GetFolder(Text_View path) override;
  bool FolderExists(Text_View path) override;
  void CreateFolder(Text_View path) override;
  std::unique_ptr<Write_Stream> CreateTextFile(Text_View path, bool overwrite,
                                               bool unicode) override;
  void DeleteFile(Text_View path, bool force) override;
  std::unique_ptr<File> FindFile(Text_View path) override;
  void MoveFolder(Text_View path, Text_View target_path) override;
  void DeleteFolder(Text_View path) override;
  void Flush(Text_View folder_path) override;
  std::unique_ptr<Folder_Lock> Lock(Text_View folder_path) override;

 private:
  Memory_Disk& Disk;
};

}  // namespace rivelt
