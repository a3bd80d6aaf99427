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
  void Plant_Folder(Text_View name) override { Disk.Put_Folder(Path(name)); }
  void Make_Read_Only(Text_View name) override { Disk.Make_Read_Only(Path(name)); }
  std::string Bytes(Text_View name) const override {
    const Memory_Disk::Item file = Disk.Find(Path(name));
    return file.Is_File() ? file.Node->Bytes : "(no such file)";
  }
  Names Names_In(Text_View folder) const override {
    Names names = Disk.Names(Path(folder));
    for (const Memory_Disk::Item& inner : Disk.In_Folder(Path(folder), true)) {
      names.push_back(Memory_Disk::Name(inner.Path));
    }
    std::ranges::sort(names);
    return names;
  }

  Memory_Disk Disk;
};

using Disk_In_Memory = Files_Test;

TEST_F(Disk_In_Memory, A_Loss_Of_Power_Leaves_What_Was_Flushed_And_Names_In_Folders_That_Survive) {
  Memory_Disk& original = static_cast<Folder_In_Memory&>(Machine).Disk;
  for (const Text path : {u"\\old\\a", u"\\old\\b", u"\\new\\x"}) original.Put_File(path, u"1");
  Write(u"\\old\\a", u"2");
  Files().DeleteFile(u"\\old\\b", true);
  Write(u"\\new\\x", u"2");
  Files().Flush(u"\\new");
  Files().GetFile(u"\\new\\x")->Move(u"\\old\\x");
  Write(u"\\new\\z", u"2");
  Files().MoveFolder(u"\\new", u"\\renamed");
  const struct {
    Names Forgetting, Left;
  } cases[] = {
      {{}, {u"\\old\\a=2", u"\\old\\x=2", u"\\renamed\\z="}},
      {{u"\\renamed"}, {u"\\old\\a=2", u"\\old\\x=2", u"\\renamed\\x=2"}},
      {{u"\\old"}, {u"\\old\\a=1", u"\\old\\b=1", u"\\renamed\\z="}},
      {{u"\\old", u"\\new", u"\\"}, {u"\\new\\x=2", u"\\old\\a=1", u"\\old\\b=1"}},
  };
  for (const auto& [forgetting, left] : cases) {
    Memory_Disk disk = original;
    disk.Lose_Power([&](Text_View folder) { return std::ranges::count(forgetting, folder) > 0; });
    Names seen;
    for (const Text_View folder : {u"\\new", u"\\old", u"\\renamed"}) {
      for (const Memory_Disk::Item& file : disk.In_Folder(folder, false))
        seen.push_back(Concatenate({file.Path, u"=", file.Content()}));
    }
    EXPECT_EQ(seen, left);
  }
}

}  // namespace

extern const bool Tells_Letter_Case_Apart = true;

std::unique_ptr<Test_Folder> Make_Test_Folder(bool elsewhere) {
  return elsewhere ? nullptr : std::make_unique<Folder_In_Memory>();
}

}  // namespace rivelt
