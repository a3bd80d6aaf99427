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
  void Plant(Text_View name, std::string_view bytes) override {
    if (Disk.Find(Path(name)).Node) return Disk.Edit_Bytes_In_Place(Path(name), bytes);
    Disk.Put_Bytes(Path(name), bytes);
  }
  void Plant_Folder(Text_View name) override { Disk.Put_Folder(Path(name)); }
  void Make_Read_Only(Text_View name) override { Disk.Make_Read_Only(Path(name)); }
  std::string Bytes(Text_View name) const override {
    const Memory_Disk::Item file = Disk.Find(Path(name));
    EXPECT_TRUE(file.Is_File());
    return file.Is_File() ? file.Node->Bytes : "";
  }
  Names Names_In(Text_View folder) const override {
    Names names = Disk.Names(Path(folder));
    for (const Memory_Disk::Item& inner : Disk.In_Folder(Path(folder), true)) {
      names.push_back(Memory_Disk::Name(inner.Path));
    }
    std::ranges::sort(names);
    return names;
  }

 private:
  Memory_Disk Disk;
};

class Disk_In_Memory : public testing::Test {
 protected:
  std::unique_ptr<File> File_At(Text_View path) { return Files.GetFile(path); }
  void Write(Text_View path, Text_View text) {
    const auto stream = Files.CreateTextFile(path, true, true);
    stream->Write(text);
    stream->Close();
  }

  // The files below the folder, each with its content.
  static Names Seen(const Memory_Disk& disk, Text_View folder = u"\\") {
    Names seen;
    for (const Memory_Disk::Item& file : disk.In_Folder(folder, false))
      seen.push_back(Concatenate({file.Path, u"=", file.Content()}));
    for (const Memory_Disk::Item& inner : disk.In_Folder(folder, true)) {
      const Names below = Seen(disk, inner.Path);
      if (below.empty()) seen.push_back(inner.Path + u"\\");
      seen.insert(seen.end(), below.begin(), below.end());
    }
    return seen;
  }

  Memory_Disk Disk;
  Memory_Files Files{Disk};
};

TEST_F(Disk_In_Memory, A_Person_Replaces_Edits_And_Renames_Files) {
  Disk.Put_File(u"\\a\\W.w", u"1");
  const auto file = File_At(u"\\A\\w.w");
  file->Keep(u"\\a\\kept");
  const File_State before = file->State();
  Disk.Edit_In_Place(u"\\a\\kept", u"22");
  EXPECT_EQ(Seen(Disk), Names({u"\\a\\kept=22", u"\\a\\W.w=22"}));
  EXPECT_EQ(file->State().Identity, before.Identity);
  EXPECT_EQ(file->State().Size, before.Size + 2);
  EXPECT_GT(file->State().Modified, before.Modified);
  Disk.Put_File(u"\\a\\W.w", u"3");
  EXPECT_NE(file->State().Identity, before.Identity);
  Disk.Rename(u"\\a\\w.W", u"w.w");
  EXPECT_EQ(Seen(Disk), Names({u"\\a\\kept=22", u"\\a\\w.w=3"}));
  EXPECT_THROW(Disk.Rename(u"\\a\\w.w", u"KEPT"), Failure);

  Disk.Refuses_Links = true;
  File_At(u"\\a\\kept")->Keep(u"\\a\\copy");
  EXPECT_NE(File_At(u"\\a\\copy")->State().Identity, before.Identity);
  Memory_Disk other = Disk;
  other.Edit_In_Place(u"\\a\\kept", u"of the other disk");
  EXPECT_EQ(Disk.Content(u"\\a\\kept"), u"22");
}

TEST_F(Disk_In_Memory, Told_Apart_Names_Of_Files_In_Two_Letter_Cases_Are_Two_Files) {
  Disk.Tells_Letter_Case_Apart = true;
  for (const Text_View name : {u"b.w", u"B.w", u"b.W"})
    Disk.Put_File(Concatenate({u"\\r\\", name}), name);
  Files.CreateFolder(u"\\r\\World");
  EXPECT_THROW(Files.CreateFolder(u"\\r\\world"), Failure);
  const auto read = [&](Text_View path) {
    return File_At(path)->OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  };
  EXPECT_EQ(read(u"\\R\\b.w"), u"b.w");
  EXPECT_EQ(read(u"\\R\\B.W"), u"B.w") << "the first of a walk";
  Write(u"\\r\\B.W", u"new");
  EXPECT_EQ(Disk.Names(u"\\r"), Names({u"B.W", u"B.w", u"b.W", u"b.w"}));
  const auto file = File_At(u"\\r\\b.w");
  EXPECT_THROW(file->Move(u"\\r\\b.W"), Failure);
  file->Move(u"\\r\\WORLD\\b.w");
  EXPECT_EQ(Seen(Disk),
            Names({u"\\r\\B.W=new", u"\\r\\B.w=B.w", u"\\r\\b.W=b.W", u"\\r\\World\\b.w=b.w"}));
}

TEST_F(Disk_In_Memory, A_Loss_Of_Power_Leaves_What_Was_Flushed_And_Names_In_Folders_That_Survive) {
  for (const Text_View path : {u"\\old\\a", u"\\old\\b", u"\\old\\c", u"\\new\\x"})
    Disk.Put_File(path, u"1");
  Write(u"\\old\\a", u"2");
  Files.DeleteFile(u"\\old\\b", true);
  Write(u"\\new\\x", u"2");
  Write(u"\\new\\y", u"2");
  Files.CreateFolder(u"\\old\\made");
  Write(u"\\old\\made\\f", u"2");
  Files.Flush(u"\\old\\made");
  Files.Flush(u"\\new");
  File_At(u"\\new\\x")->Move(u"\\old\\x");
  Write(u"\\new\\z", u"2");
  Disk.Edit_In_Place(u"\\old\\c", u"3");
  const struct {
    const char* Situation;
    Names Forgetting;
    Names Left;
  } cases[] = {
      {"no name is lost",
       {},
       {u"\\new\\y=2", u"\\new\\z=", u"\\old\\a=", u"\\old\\c=3", u"\\old\\x=2",
        u"\\old\\made\\f=2"}},
      {"the folder that was flushed",
       {u"\\new"},
       {u"\\new\\x=2", u"\\new\\y=2", u"\\old\\a=", u"\\old\\c=3", u"\\old\\x=2",
        u"\\old\\made\\f=2"}},
      {"the folder that was not",
       {u"\\old"},
       {u"\\new\\y=2", u"\\new\\z=", u"\\old\\a=1", u"\\old\\b=1", u"\\old\\c=3"}},
      {"both",
       {u"\\old", u"\\new", u"\\old\\made"},
       {u"\\new\\x=2", u"\\new\\y=2", u"\\old\\a=1", u"\\old\\b=1", u"\\old\\c=3"}},
  };
  for (const auto& [situation, forgetting, left] : cases) {
    SCOPED_TRACE(situation);
    Memory_Disk disk = Disk;
    disk.Lose_Power([&](Text_View folder) { return std::ranges::count(forgetting, folder) > 0; });
    EXPECT_EQ(Seen(disk), left);
    disk.Lose_Power([](Text_View) { return true; });
    EXPECT_EQ(Seen(disk), left) << "what is left is durable";
  }
}

TEST_F(Disk_In_Memory, A_Folder_Renamed_And_Not_Flushed_Has_Its_Old_Name_After_A_Loss_Of_Power) {
  Disk.Put_Folder(u"\\backup\\a.unfinished");
  Write(u"\\backup\\a.unfinished\\f", u"1");
  Files.Flush(u"\\backup\\a.unfinished");
  Files.MoveFolder(u"\\backup\\a.unfinished", u"\\backup\\a");
  Write(u"\\backup\\a\\late", u"1");
  Disk.Lose_Power([](Text_View) { return true; });
  EXPECT_EQ(Seen(Disk), Names({u"\\backup\\a.unfinished\\f=1"}));
}

}  // namespace

std::unique_ptr<Test_Folder> Make_Test_Folder() {
  return std::make_unique<Folder_In_Memory>();
}

}  // namespace rivelt
