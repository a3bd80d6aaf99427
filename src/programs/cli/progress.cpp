#include "programs/cli/progress.h"

#include <utility>
#include <vector>

namespace rivelt {
namespace {

class Watched_File : public File {
 public:
  Watched_File(std::unique_ptr<File> file, Progress& progress)
      : Watched(std::move(file)), Watched_Progress(progress) {}

  Text name() const override { return Watched->name(); }
  std::unique_ptr<Read_Stream> OpenAsTextStream(int mode, int format) override {
    ++Watched_Progress.Opened;
    return Watched->OpenAsTextStream(mode, format);
  }
  void Delete(bool force) override { Watched->Delete(force); }
  void Move(Text_View target_path) override { Watched->Move(target_path); }

 private:
  std::unique_ptr<File> Watched;
  Progress& Watched_Progress;
};

class Watched_Folder : public Folder {
 public:
  Watched_Folder(std::unique_ptr<Folder> folder, Progress& progress)
      : Watched(std::move(folder)), Watched_Progress(progress) {}

  Text name() const override { return Watched->name(); }
  Collection<Folder> SubFolders() const override { return Watched->SubFolders(); }
  Collection<File> Files() const override {
    std::vector<std::unique_ptr<File>> items = Watched->Files().Take();
    Watched_Progress = {0, static_cast<Long>(items.size())};
    for (auto& item : items) {
      item = std::make_unique<Watched_File>(std::move(item), Watched_Progress);
    }
    return Collection<File>(std::move(items));
  }

 private:
  std::unique_ptr<Folder> Watched;
  Progress& Watched_Progress;
};

class Watched_File_System : public File_System_Object {
 public:
  Watched_File_System(std::unique_ptr<File_System_Object> files, Progress& progress)
      : Watched(std::move(files)), Watched_Progress(progress) {}

  std::unique_ptr<File> GetFile(Text_View path) override { return Watched->GetFile(path); }
  std::unique_ptr<Folder> GetFolder(Text_View path) override {
    return std::make_unique<Watched_Folder>(Watched->GetFolder(path), Watched_Progress);
  }
  bool FolderExists(Text_View path) override { return Watched->FolderExists(path); }
  void CreateFolder(Text_View path) override { Watched->CreateFolder(path); }
  std::unique_ptr<Write_Stream> CreateTextFile(Text_View path, bool overwrite,
                                               bool unicode) override {
    return Watched->CreateTextFile(path, overwrite, unicode);
  }
  void DeleteFile(Text_View path, bool force) override { Watched->DeleteFile(path, force); }

 private:
  std::unique_ptr<File_System_Object> Watched;
  Progress& Watched_Progress;
};

}  // namespace

std::unique_ptr<File_System_Object> Watched_Files(std::unique_ptr<File_System_Object> files,
                                                  Progress& progress) {
  return std::make_unique<Watched_File_System>(std::move(files), progress);
}

}  // namespace rivelt
