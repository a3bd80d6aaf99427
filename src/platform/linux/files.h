#pragma once

#include <memory>
#include <string>

#include "platform/linux/paths.h"
#include "system/file_service.h"

namespace rivelt {

// The files of a Linux machine. Drive letters are those of the Wine prefix, a native path.
class Linux_File_System : public File_System_Object {
 public:
  explicit Linux_File_System(const std::string& wine_prefix)
      : Paths(std::make_shared<Native_Paths>(wine_prefix)) {}

  void Set_Root(Text_View path) override;
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
  std::shared_ptr<Native_Paths> Paths;  // files and folders may outlive this object
};

}  // namespace rivelt
