#include "memory_files.h"

namespace rivelt::bench {
namespace {

class Catalogue_Stream : public Read_Stream {
 public:
  explicit Catalogue_Stream(Text_View text) : Content(text) {}
  Text ReadAll() override { return Text(Content); }

 private:
  Text_View Content;
};

class Catalogue_File : public File {
 public:
  explicit Catalogue_File(Text_View text) : Content(text) {}
  Text name() const override { return u"tsection.dat"; }
  std::unique_ptr<Read_Stream> OpenAsTextStream(int, int) override {
    return std::make_unique<Catalogue_Stream>(Content);
  }
  void Delete(bool) override { throw Failure(); }
  void Move(Text_View) override { throw Failure(); }

 private:
  Text_View Content;
};

class Empty_Folder : public Folder {
 public:
  Text name() const override { return u"routes"; }
  Collection<Folder> SubFolders() const override { return Collection<Folder>({}); }
  Collection<File> Files() const override { return Collection<File>({}); }
};

class Memory_Files : public File_System_Object {
 public:
  explicit Memory_Files(Text_View text) : Content(text) {}
  std::unique_ptr<File> GetFile(Text_View) override {
    return std::make_unique<Catalogue_File>(Content);
  }
  std::unique_ptr<Folder> GetFolder(Text_View) override { return std::make_unique<Empty_Folder>(); }
  bool FolderExists(Text_View) override { return false; }
  void CreateFolder(Text_View) override { throw Failure(); }
  std::unique_ptr<Write_Stream> CreateTextFile(Text_View, bool, bool) override { throw Failure(); }
  void DeleteFile(Text_View, bool) override { throw Failure(); }

 private:
  Text_View Content;
};

}  // namespace

std::unique_ptr<File_System_Object> Make_Memory_Files(Text_View catalogue) {
  return std::make_unique<Memory_Files>(catalogue);
}

}  // namespace rivelt::bench
