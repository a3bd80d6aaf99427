// The disk in memory for the tests that every back end passes, and what it does beyond them.

#include <algorithm>

#include "files_fixture.h"
#include "platform/memory/memory_files.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

class Folder_In_Memory : public Test_Folder {
 public:
  Folder_In_Memory() {
    Disk.Tells_Letter_Case_Apart = true;
    Disk.Put_Folder(u"\\test");
  }

  std::unique_ptr<File_System_Object> Files() override { return Memory_Files(Disk); }
  Text Path(Text_View name) const override { return Concatenate({u"\\test\\", name}); }
  void Plant(Text_View name, std::string_view bytes) override {
    if (Disk.Find(Path(name)).Path == Path(name))
      return Disk.Edit_Bytes_In_Place(Path(name), bytes);
    Disk.Put_Bytes(Path(name), bytes);
  }
  void Make_Read_Only(Text_View name) override { Disk.Make_Read_Only(Path(name)); }
  Names Names_In(Text_View folder) const override {
    Names names = Disk.Names(Path(folder));
    for (const Memory_Disk::Item& inner : Disk.In_Folder(Path(folder), true))
      names.push_back(Memory_Disk::Name(inner.Path));
    std::ranges::sort(names);
    return names;
  }

  Memory_Disk Disk;
};

using Disk_In_Memory = Files_Test;

TEST_F(Disk_In_Memory, A_Loss_Of_Power_Leaves_A_Replaced_File_As_It_Was_Or_Replaced_As_A_Whole) {
  const Memory_Disk& original = static_cast<Folder_In_Memory&>(Machine).Disk;
  Machine.Plant(u"a", "old");
  Files().Flush(u"\\test");
  Write(u"\\test\\a", u"new");
  for (const bool forgets : {false, true}) {
    Memory_Disk disk = original;
    disk.Lose_Power([&](Text_View) { return forgets; });
    EXPECT_EQ(disk.Find(u"\\test\\a").Node->Bytes, forgets ? "old" : "new");
  }
}

}  // namespace

std::unique_ptr<Test_Folder> Make_Test_Folder(bool elsewhere) {
  return elsewhere ? nullptr : std::make_unique<Folder_In_Memory>();
}

}  // namespace rivelt
