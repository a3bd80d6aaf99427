// What the files of every machine do.

#include <chrono>
#include <string>
#include <thread>

#include "files_fixture.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

using namespace std::string_literals;

using Files_Contract = Files_Test;

TEST_F(Files_Contract, ReadAll_Every_Kind_Of_Start_And_End_Gives_The_Units) {
  const std::pair<std::string, Text> cases[] = {
      {"", u""},
      {"\xFF\xFE", u""},
      {"\xFF\xFE"s + "A\0\x26\x20"s, u"A\u2026"},
      {"\xFE\xFF"s + "\0A\x20\x26"s, u"A\u2026"},
      {"A\0B\0"s, u"AB"},
      {"\xFF\xFE\xFF\xFE", u"\uFEFF"},
      {"\xFF", u"\xFF"},
      {"\xFF\xFE\xE9", u"\xE9"},
      {"A\0\xE9"s, u"A\xE9"},
      {"\xFE\xFF"s + "\0AB"s, u"AB"},
      {"\xFF\xFE\0\0\0\xD8"s, Text{0, 0xD800}},
  };
  for (const auto& [bytes, units] : cases) {
    Machine.Plant(u"read.dat", bytes);
    EXPECT_EQ(Read(Path(u"read.dat")), units) << testing::PrintToString(bytes);
  }
}

TEST_F(Files_Contract, Write_In_Parts_Gives_One_Mark_And_Narrow_Text_None_And_Every_Unit_Survives) {
  Text every_unit(0x10000, u'\0');
  for (std::size_t i = 0; i < every_unit.size(); ++i) every_unit[i] = static_cast<char16_t>(i);
  const auto wide = Files().CreateTextFile(Path(u"wide"), true, true);
  for (const Text_View part : {Text_View(u"A"), Text_View(every_unit)}) wide->Write(part);
  wide->Close();
  EXPECT_EQ(Machine.Bytes(u"wide").substr(0, 8), "\xFF\xFE"s + "A\0\0\0\1\0"s);
  EXPECT_EQ(Read(Path(u"wide")), u"A" + every_unit);
  Write(Path(u"narrow"), u"A\r\n");
  EXPECT_EQ(Machine.Bytes(u"narrow"), "A\r\n");
}

TEST_F(Files_Contract, A_File_Is_There_From_Close_On_And_Replaces_One_Only_Where_It_May) {
  Machine.Plant_Folder(u"new");
  Machine.Plant_Folder(u"old");
  Machine.Plant(u"old/a.w", "a longer text that was here before");
  for (const Text folder : {u"new", u"old"}) {
    const auto stream = Files().CreateTextFile(Path(folder + u"\\a.w"), true, true);
    stream->Write(Text(100000, u'x'));
    EXPECT_THROW(Files().GetFile(Path(u"new\\a.w")), Failure);
    EXPECT_EQ(Machine.Bytes(u"old/a.w"), "a longer text that was here before");
  }
  EXPECT_THROW(Write(Path(u"old\\a.w"), u"new", false), Failure);
  EXPECT_EQ(Machine.Names_In(u"new"), Names());
  EXPECT_EQ(Machine.Names_In(u"old"), Names({u"a.w"}));
  EXPECT_EQ(Machine.Bytes(u"old/a.w"), "a longer text that was here before");
  auto stream = Files().CreateTextFile(Path(u"new\\a.w"), false, true);
  stream->Write(u"mine");
  Machine.Plant(u"new/a.w", "theirs");
  EXPECT_THROW(stream->Close(), Failure);
  EXPECT_EQ(Machine.Bytes(u"new/a.w"), "theirs");
  stream.reset();
  Write(Path(u"new\\a.w"), u"new");
  Write(Path(u"new\\b.w"), u"new", false);
  EXPECT_EQ(Machine.Bytes(u"new/a.w"), "new");
  EXPECT_EQ(Machine.Names_In(u"new"), Names({u"a.w", u"b.w"}));
}

TEST_F(Files_Contract, What_Is_Missing_Or_Of_The_Wrong_Kind_Is_A_Failure_And_Changes_Nothing) {
  Machine.Plant(u"file", "bytes");
  Machine.Plant_Folder(u"folder");
  const Text long_name(300, u'n');
  const Text with_zero = u"file\0"s;
  for (const Text& name :
       Names({u"none", u"none\\file", u"folder", u"file\\file", long_name, with_zero}))
    EXPECT_THROW(Files().GetFile(Path(name)), Failure);
  for (const Text& name : Names({u"folder", u"file", u"none\\folder", with_zero}))
    EXPECT_THROW(Files().CreateFolder(Path(name)), Failure);
  for (const Text name : {u"none", u"file"}) EXPECT_THROW(Files().GetFolder(Path(name)), Failure);
  for (const Text name : {u"none\\file", u"folder"}) EXPECT_THROW(Write(Path(name), u"x"), Failure);
  for (const Text name : {u"none", u"folder"})
    EXPECT_THROW(Files().DeleteFile(Path(name), true), Failure);
  EXPECT_THROW(Files().GetFile(u""), Failure);
  for (const Text& path : {Path(u"none"), Path(u"file"), Path(long_name), Path(u"folder\0"s)})
    EXPECT_FALSE(Files().FolderExists(path));
  EXPECT_TRUE(Files().FolderExists(Path(u"folder")));
  EXPECT_EQ(Machine.Names_In(u""), Names({u"file", u"folder"}));
  EXPECT_EQ(Machine.Bytes(u"file"), "bytes");
}

TEST_F(Files_Contract, Paths_Of_Any_Letters_In_Other_Case_And_With_Either_Separator_Lead_There) {
  for (const Text name : {u"線路", u"\U0001F682", u"a b", u"Äst"}) {
    Files().CreateFolder(Path(name));
    Write(Path(Concatenate({name, u"\\", name})), u"x");
    EXPECT_EQ(Names_Of_Items(Files().GetFolder(Path(name))->Files()), Names({name}));
    EXPECT_EQ(Machine.Names_In(name), Names({name}));
  }
  for (const Text path : {u"äst\\ÄST", u"ÄST/äst", u"\\äst\\\\äst", u"äST\\.\\..\\äst/äst"})
    EXPECT_EQ(Read(Path(path)), u"x");
  EXPECT_TRUE(Files().FolderExists(Path(u"äST")));
  EXPECT_EQ(Files().GetFolder(Path(u"äST\\"))->name(), u"Äst") << "as it is on disk";
  EXPECT_EQ(Files().GetFile(Path(u"äST\\äst"))->name(), u"Äst");

  Write(Path(u"äST\\W-1.w"), u"x");
  Files().GetFile(Path(u"äst\\w-1.W"))->Move(Path(u"A B\\Moved.W"));
  Files().DeleteFile(Path(u"ÄST\\ÄST"), true);
  EXPECT_EQ(Machine.Names_In(u"a b"), Names({u"Moved.W", u"a b"}));
  EXPECT_EQ(Machine.Names_In(u"Äst"), Names());
}

TEST_F(Files_Contract, A_Walk_Holds_What_Was_There_By_Name_And_By_Kind) {
  for (const Text name : {u"b.w", u"C.w", u"a.w", u"Ö.w", u"ö1.w", u"_.w", u"Z.w"})
    Machine.Plant(name, "");
  for (const Text name : {u"y", u"X", u"z.w.d"}) Machine.Plant_Folder(name);
  const auto folder = Files().GetFolder(Path(u""));
  const auto files = folder->Files();
  const auto folders = folder->SubFolders();
  for (const auto& file : files) {
    if (file->name() != u"a.w") file->Delete(true);
    Write(Path(u"later.w"), u"");
  }
  EXPECT_EQ(files.Count(), 7);
  EXPECT_EQ(Names_Of_Items(files),
            Names({u"_.w", u"a.w", u"b.w", u"C.w", u"Z.w", u"Ö.w", u"ö1.w"}));
  EXPECT_EQ(Names_Of_Items(folders), Names({u"X", u"y", u"z.w.d"}));
  EXPECT_EQ(Names_Of_Items(folder->Files()), Names({u"a.w", u"later.w"}));
  EXPECT_EQ((*folders.begin())->Files().Count(), 0);
}

TEST_F(Files_Contract, A_Read_Only_File_Is_Not_Replaced_And_Deleted_By_Force_Only) {
  for (const Text name : {u"by_file", u"by_path"}) {
    Machine.Plant(name, "x");
    Machine.Make_Read_Only(name);
  }
  const auto file = Files().GetFile(Path(u"by_file"));
  EXPECT_THROW(file->Delete(false), Failure);
  EXPECT_THROW(Files().DeleteFile(Path(u"by_path"), false), Failure);
  EXPECT_THROW(Write(Path(u"by_path"), u"new"), Failure);
  EXPECT_EQ(Machine.Bytes(u"by_path"), "x");
  file->Delete(true);
  Files().DeleteFile(Path(u"by_path"), true);
  EXPECT_EQ(Machine.Names_In(u""), Names());
  EXPECT_THROW(file->Delete(true), Failure);
}

TEST_F(Files_Contract, Move_Onto_Something_Or_Into_Nowhere_Leaves_Both_And_Else_Moves) {
  Machine.Plant_Folder(u"to");
  Machine.Plant(u"to/taken", "old");
  Machine.Plant(u"from", "new");
  Machine.Make_Read_Only(u"from");
  const auto file = Files().GetFile(Path(u"from"));
  for (const Text& target : Names({u"to\\taken", u"to", u"none\\free", Text(300, u'n'), u"a\0b"s}))
    EXPECT_THROW(file->Move(Path(target)), Failure);
  EXPECT_EQ(Machine.Bytes(u"from"), "new");
  EXPECT_EQ(Machine.Bytes(u"to/taken"), "old");
  EXPECT_EQ(Machine.Names_In(u"to"), Names({u"taken"}));

  file->Move(Path(u"to\\free"));
  EXPECT_EQ(Machine.Bytes(u"to/free"), "new");
  EXPECT_EQ(Machine.Names_In(u""), Names({u"to"}));

  Machine.Plant(u"gone", "x");
  const auto gone = Files().GetFile(Path(u"gone"));
  Files().DeleteFile(Path(u"gone"), true);
  EXPECT_THROW(gone->Move(Path(u"to\\gone")), Failure);
  EXPECT_THROW(gone->OpenAsTextStream(For_Reading, Format_Unicode), Failure);
}

TEST_F(Files_Contract, A_Kept_File_Outlives_Its_Other_Name_And_A_Copy_Is_A_File_Of_Its_Own) {
  Machine.Plant(u"a.w", "first");
  const auto file = Files().GetFile(Path(u"a.w"));
  file->Keep(Path(u"kept"));
  file->Copy(Path(u"copy"));
  for (const Text_View taken : {u"kept", u"copy"}) {
    EXPECT_THROW(file->Keep(Path(taken)), Failure);
    EXPECT_THROW(file->Copy(Path(taken)), Failure);
  }
  Write(Path(u"a.w"), u"other");
  Files().DeleteFile(Path(u"a.w"), true);
  EXPECT_EQ(Machine.Names_In(u""), Names({u"copy", u"kept"}));
  EXPECT_EQ(Machine.Bytes(u"kept"), "first");
  EXPECT_EQ(Machine.Bytes(u"copy"), "first");
}

TEST_F(Files_Contract, State_Knows_A_File_By_Its_Identity_And_Whether_It_Was_Written) {
  Machine.Plant(u"a.w", "first");
  const auto state = [&](Text_View name) { return Files().GetFile(Path(name))->State(); };
  const File_State first = state(u"a.w");
  EXPECT_EQ(first.Size, 5u);
  EXPECT_EQ(first.Names, 1u);
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  EXPECT_LT(std::chrono::abs(std::chrono::nanoseconds(first.Modified) - now),
            std::chrono::hours(1));

  const auto file = Files().GetFile(Path(u"A.W"));
  file->Copy(Path(u"copy"));
  EXPECT_NE(state(u"copy").Identity, first.Identity);
  EXPECT_EQ(state(u"copy").Modified, first.Modified);
  file->Keep(Path(u"kept"));
  EXPECT_EQ(state(u"kept").Identity, first.Identity);
  EXPECT_EQ(file->State().Names, 2u);
  file->Keep(Path(u"third"));
  EXPECT_NE(state(u"third").Identity, first.Identity) << "a file of two names is copied";
  EXPECT_EQ(file->State().Names, 2u);

  file->Move(Path(u"moved"));
  EXPECT_EQ(file->State().Identity, first.Identity);
  EXPECT_EQ(file->State().Modified, first.Modified);
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  Machine.Plant(u"moved", "in place");
  EXPECT_EQ(state(u"kept").Identity, first.Identity);
  EXPECT_EQ(state(u"kept").Size, 8u);
  EXPECT_GT(state(u"kept").Modified, first.Modified);
  Write(Path(u"moved"), u"a file of its own");
  EXPECT_NE(state(u"moved").Identity, first.Identity);
  EXPECT_EQ(state(u"kept").Names, 1u);
  Files().DeleteFile(Path(u"moved"), true);
  EXPECT_THROW(file->State(), Failure);
}

TEST_F(Files_Contract, Read_Bytes_Gives_Every_Byte_Once_In_Pieces_Of_A_Megabyte_At_Most) {
  std::string long_one(3'000'001, 'x');
  for (std::size_t i = 0; i < long_one.size(); ++i) long_one[i] = static_cast<char>(i % 251);
  for (const std::string& bytes : {""s, "\xFF\xFE"s + "A\0\xE9"s, long_one}) {
    Machine.Plant(u"a.w", bytes);
    const auto file = Files().GetFile(Path(u"a.w"));
    std::string read;
    file->Read_Bytes([&](std::string_view piece) {
      EXPECT_LE(piece.size(), std::size_t{1} << 20);
      read += piece;
    });
    EXPECT_TRUE(read == bytes) << bytes.size();
    file->Delete(true);
    EXPECT_THROW(file->Read_Bytes([](std::string_view) {}), Failure);
  }
}

TEST_F(Files_Contract, Folders_Are_Renamed_Locked_And_Removed) {
  Machine.Plant_Folder(u"one");
  Machine.Plant_Folder(u"taken");
  Machine.Plant_Folder(u"one/inner");
  Machine.Plant(u"one/inner/a.w", "x");
  for (const Text_View target : {u"taken", u"none\\free", u"one\\inner\\free"})
    EXPECT_THROW(Files().MoveFolder(Path(u"one"), Path(target)), Failure);
  EXPECT_THROW(Files().DeleteFolder(Path(u"one")), Failure) << "not empty";
  EXPECT_NO_THROW(Files().Flush(Path(u"one")));
  EXPECT_THROW(Files().Flush(Path(u"none")), Failure);
  {
    const auto lock = Files().Lock(Path(u"one"));
    EXPECT_THROW(Files().Lock(Path(u"taken\\..\\ONE")), Failure);
    EXPECT_NO_THROW(Files().Lock(Path(u"taken")));
    EXPECT_TRUE(lock->In_Force());
    Files().MoveFolder(Path(u"one"), Path(u"two"));
    EXPECT_EQ(Read(Path(u"two\\inner\\a.w")), u"x");
    EXPECT_FALSE(lock->In_Force());
    Files().CreateFolder(Path(u"one"));
    EXPECT_FALSE(lock->In_Force());
  }
  EXPECT_NO_THROW(Files().Lock(Path(u"two")));
  Files().DeleteFolder(Path(u"one"));
  EXPECT_EQ(Machine.Names_In(u""), Names({u"taken", u"two"}));
}

}  // namespace
}  // namespace rivelt
