#pragma once

#include <memory>
#include <utility>

#include "platform/files/file_verbs.h"
#include "system/file_service.h"

namespace rivelt {

// The files of a system, over its verbs.
class System_Files : public File_System_Object {
 public:
  explicit System_Files(std::shared_ptr<File_Verbs> verbs) : Verbs(std::move(verbs)) {}

  void Set_Root(Text_View path) override { Verbs->Set_Root(path); }
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
  std::shared_ptr<File_Verbs> Verbs;  // files and folders may outlive this object
};

}  // namespace rivelt
