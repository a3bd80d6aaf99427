#include "programs/cli/watched_files.h"

#include <utility>
#include <vector>

namespace rivelt {
namespace {

// What each of the classes holds.
template <class Kind>
class Watched {
 public:
  Watched(std::unique_ptr<Kind> inner, File_Watcher& watcher)
      : Held(std::move(inner)), Watcher(watcher) {}

 protected:
  // To pass an operation on to.
  Kind& Inner() const {
    Watcher.Before_Operation();
    return *Held;
  }

  std::unique_ptr<Kind> Held;
  File_Watcher& Watcher;
};

class Watched_Read_Stream : public Read_Stream, Watched<Read_Stream> {
 public:
  using Watched::Watched;
  Text ReadAll() override { return Inner().ReadAll(); }
};

class Watched_Write_Stream : public Write_Stream, Watched<Write_Stream> {
 public:
  using Watched::Watched;
  void Write(Text_View text) override { Inner().Write(text); }
  void Close() override { Inner().Close(); }
};

class Watched_File : public File, Watched<File> {
 public:
  using Watched::Watched;
  Text name() const override { return Held->name(); }
  std::unique_ptr<Read_Stream> OpenAsTextStream(int mode, int format) override {
    Watcher.File_Opened();
    return std::make_unique<Watched_Read_Stream>(Inner().OpenAsTextStream(mode, format), Watcher);
  }
  void Delete(bool force) override { Inner().Delete(force); }
  void Move(Text_View target_path) override { Inner().Move(target_path); }
  void Copy(Text_View target_path) override { Inner().Copy(target_path); }
  void Keep(Text_View target_path) override { Inner().Keep(target_path); }
  void Take_Mode_Of(Text_View path) override { Inner().Take_Mode_Of(path); }
  File_State State() const override { return Inner().State(); }
  void Read_Bytes(const std::function<void(std::string_view)>& take) const override {
    Inner().Read_Bytes(take);
  }
};

class Watched_Folder : public Folder, Watched<Folder> {
 public:
  using Watched::Watched;
  Text name() const override { return Held->name(); }
  Collection<Folder> SubFolders() const override {
    return Wrapped<Folder, Watched_Folder>(Inner().SubFolders());
  }
  Collection<File> Files() const override {
    Collection<File> files = Inner().Files();
    Watcher.Folder_Listed(files.Count());
    return Wrapped<File, Watched_File>(std::move(files));
  }

 private:
  template <class Item, class Wrapper>
  Collection<Item> Wrapped(Collection<Item> collection) const {
    std::vector<std::unique_ptr<Item>> items = std::move(collection).Take();
    for (auto& item : items) item = std::make_unique<Wrapper>(std::move(item), Watcher);
    return Collection<Item>(std::move(items));
  }
};

class Watched_File_System : public File_System_Object, Watched<File_System_Object> {
 public:
  using Watched::Watched;
  void Set_Root(Text_View path) override { Held->Set_Root(path); }
  std::unique_ptr<File> GetFile(Text_View path) override {
    return std::make_unique<Watched_File>(Inner().GetFile(path), Watcher);
  }
  std::unique_ptr<Folder> GetFolder(Text_View path) override {
    return std::make_unique<Watched_Folder>(Inner().GetFolder(path), Watcher);
  }
  bool FolderExists(Text_View path) override { return Inner().FolderExists(path); }
  void CreateFolder(Text_View path) override { Inner().CreateFolder(path); }
  std::unique_ptr<Write_Stream> CreateTextFile(Text_View path, bool overwrite,
                                               bool unicode) override {
    return std::make_unique<Watched_Write_Stream>(Inner().CreateTextFile(path, overwrite, unicode),
                                                  Watcher);
  }
  void DeleteFile(Text_View path, bool force) override { Inner().DeleteFile(path, force); }
  std::unique_ptr<File> FindFile(Text_View path) override {
    auto found = Inner().FindFile(path);
    return found ? std::make_unique<Watched_File>(std::move(found), Watcher) : nullptr;
  }
  void MoveFolder(Text_View path, Text_View target_path) override {
    Inner().MoveFolder(path, target_path);
  }
  void DeleteFolder(Text_View path) override { Inner().DeleteFolder(path); }
  void Flush(Text_View folder_path) override { Inner().Flush(folder_path); }
  std::unique_ptr<Folder_Lock> Lock(Text_View folder_path) override {
    return Inner().Lock(folder_path);
  }
};

}  // namespace

std::unique_ptr<File_System_Object> Watched_Files(std::unique_ptr<File_System_Object> files,
                                                  File_Watcher& watcher) {
  return std::make_unique<Watched_File_System>(std::move(files), watcher);
}

}  // namespace rivelt
