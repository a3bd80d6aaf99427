// The disk in memory for the tests that every back end passes, and what it does beyond them.

#include <algorithm>

#include "files_fixture.h"
#include "platform/memory/memory_files.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

class Folder_In_Memory : public Test_Folder {
 public:
  Folder_In_Memory() { Disk.Put_Folder(u"\\test"); }

  std::unique_ptr<File_System_Object> Files() override {
    return std::make_unique<Memory_Files>(Disk);
  }
  Text Path(Text_View name) const override { return Concatenate({u"\\test\\", name}); }
  void Plant(Text_View name, std::string_view bytes) override { Disk.Put_Bytes(Path(name), bytes); }
  void Plant_Folder(Text_View name) override { Disk.Put_Folder(Path(name)); }
  void Make_Read_Only(Text_View name) override { Disk.Find(Path(name))->Is_Read_Only = true; }
  std::string Bytes(Text_View name) const override {
    const Memory_Disk::Item* file = Disk.Find(Path(name));
    EXPECT_NE(file, nullptr);
    return file == nullptr ? "" : file->Bytes;
  }
  Names Names_In(Text_View folder) const override {
    Names names = Disk.Names(Path(folder));
    for (const Memory_Disk::Item* inner : Disk.In_Folder(Path(folder), true)) {
      names.push_back(Memory_Disk::Name(inner->Path));
    }
    std::ranges::sort(names);
    return names;
  }

 private:
  Memory_Disk Disk;
};

}  // namespace

std::unique_ptr<Test_Folder> Make_Test_Folder() {
  return std::make_unique<Folder_In_Memory>();
}

}  // namespace rivelt
