// What the files of every machine do.

#include <chrono>
#include <numeric>
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
  Text every_unit(1'500'000, u'\0');
  std::iota(every_unit.begin(), every_unit.end(), u'\0');
  const auto wide = Files().CreateTextFile(Path(u"wide"), true, true);
  for (const Text_View part : {Text_View(u"A"), Text_View(every_unit)}) wide->Write(part);
  wide->Close();
  EXPECT_EQ(Machine.Bytes(u"wide").substr(0, 8), "\xFF\xFE"s + "A\0\0\0\1\0"s);
  EXPECT_TRUE(Read(Path(u"wide")) == u"A" + every_unit);
  std::string bytes;
  Files().GetFile(Path(u"wide"))->Read_Bytes([&](std::string_view piece) {
    EXPECT_LE(piece.size(), std::size_t{1} << 20);
    bytes += piece;
  });
  EXPECT_TRUE(Machine.Bytes(u"wide") == bytes);
  Write(Path(u"narrow"), u"A\r\n");
  EXPECT_EQ(Machine.Bytes(u"narrow"), "A\r\n");
}

TEST_F(Files_Contract, A_File_Is_There_From_Close_On_And_Replaces_One_Only_Where_It_May) {
  Machine.Plant(u"old.w", "a longer text that was here before");
  for (const Text name : {u"new.w", u"old.w"}) {
    const auto stream = Files().CreateTextFile(Path(name), true, true);
    stream->Write(Text(100000, u'x'));
    EXPECT_THROW(Files().GetFile(Path(u"new.w")), Failure);
    EXPECT_EQ(Machine.Bytes(u"old.w"), "a longer text that was here before");
  }
  EXPECT_THROW(Write(Path(u"old.w"), u"new", false), Failure);
  EXPECT_EQ(Machine.Names_In(u""), Names({u"old.w"}));
  EXPECT_EQ(Machine.Bytes(u"old.w"), "a longer text that was here before");
  auto stream = Files().CreateTextFile(Path(u"new.w"), false, true);
  stream->Write(u"mine");
  Machine.Plant(u"new.w", "theirs");
  EXPECT_THROW(stream->Close(), Failure);
  EXPECT_EQ(Machine.Bytes(u"new.w"), "theirs");
  stream.reset();
  Write(Path(u"old.w"), u"new");
  Write(Path(u"third.w"), u"new", false);
  EXPECT_EQ(Machine.Bytes(u"old.w"), "new");
  EXPECT_EQ(Machine.Names_In(u""), Names({u"new.w", u"old.w", u"third.w"}));
}

TEST_F(Files_Contract, What_Is_Missing_Or_Of_The_Wrong_Kind_Is_A_Failure_And_Changes_Nothing) {
  Machine.Plant(u"file", "bytes");
  Machine.Plant_Folder(u"folder");
  const Text long_name(300, u'n');
  const Text with_zero = u"file\0"s;
  for (const Text& name :
       Names({u"none", u"none\\file", u"folder", u"file\\file", long_name, with_zero}))
    EXPECT_THROW(Files().GetFile(Path(name)), Failure);
  for (const Text& name : Names({u"folder", u"FOLDER", u"file", u"none\\folder", with_zero}))
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
  EXPECT_EQ(Files().GetFolder(Path(u"äST\\"))->name(), u"Äst") << "as it is on disk";
  EXPECT_EQ(Files().GetFile(Path(u"äST\\äst"))->name(), u"Äst");

  Write(Path(u"äST\\W-1.w"), u"x");
  Files().GetFile(Path(u"äst\\w-1.W"))->Move(Path(u"A B\\Moved.W"));
  Files().DeleteFile(Path(u"ÄST\\ÄST"), true);
  EXPECT_EQ(Machine.Names_In(u"a b"), Names({u"Moved.W", u"a b"}));
  EXPECT_EQ(Machine.Names_In(u"Äst"), Names());
}

TEST_F(Files_Contract, The_Spelling_Tells_Files_Apart_Whose_Names_Differ_In_Case_Only) {
  if (!Tells_Letter_Case_Apart) GTEST_SKIP() << "one file has all spellings of a name";
  for (const Text name : {u"b.w", u"B.w", u"b.W", u"c.W"}) Machine.Plant(name, "");

  EXPECT_EQ(Files().GetFile(Path(u"b.W"))->name(), u"b.W");
  EXPECT_EQ(Files().GetFile(Path(u"B.W"))->name(), u"B.w") << "the first of a walk";
  EXPECT_EQ(Files().GetFile(Path(u"C.w"))->name(), u"c.W");
  Write(Path(u"B.W"), u"x");
  EXPECT_EQ(Machine.Names_In(u""), Names({u"B.W", u"B.w", u"b.W", u"b.w", u"c.W"}));
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
    Write(Path(u"x\\later.w"), u"");
  }
  EXPECT_EQ(Names_Of_Items(files),
            Names({u"_.w", u"a.w", u"b.w", u"C.w", u"Z.w", u"Ö.w", u"ö1.w"}));
  EXPECT_EQ(Names_Of_Items(folders), Names({u"X", u"y", u"z.w.d"}));
  EXPECT_EQ(Names_Of_Items(folder->Files()), Names({u"a.w"}));
  EXPECT_EQ(Names_Of_Items((*folders.begin())->Files()), Names({u"later.w"}));
}

TEST_F(Files_Contract, A_Read_Only_File_Is_Not_Replaced_And_Deleted_By_Force_Only_And_Then_Gone) {
  for (const Text name : {u"by_file", u"by_path"}) {
    Machine.Plant(name, "x");
    Machine.Make_Read_Only(name);
  }
  const auto file = Files().GetFile(Path(u"by_file"));
  Machine.Plant(u"another", "x");
  const auto another = Files().GetFile(Path(u"another"));
  another->Take_Mode_Of(Path(u"by_file"));
  EXPECT_THROW(another->Delete(false), Failure);
  another->Delete(true);
  EXPECT_THROW(file->Delete(false), Failure);
  EXPECT_THROW(Files().DeleteFile(Path(u"by_path"), false), Failure);
  EXPECT_THROW(Write(Path(u"by_path"), u"new"), Failure);
  EXPECT_EQ(Machine.Bytes(u"by_path"), "x");
  file->Keep(Path(u"kept"));
  file->Delete(true);
  Files().DeleteFile(Path(u"by_path"), true);
  EXPECT_THROW(Files().DeleteFile(Path(u"kept"), false), Failure) << "still read-only";
  Files().DeleteFile(Path(u"kept"), true);
  EXPECT_THROW(file->Delete(true), Failure);
  EXPECT_THROW(file->Move(Path(u"to")), Failure);
  EXPECT_THROW(file->Copy(Path(u"to")), Failure);
  EXPECT_THROW(file->Keep(Path(u"to")), Failure);
  EXPECT_THROW(file->State(), Failure);
  EXPECT_THROW(file->OpenAsTextStream(For_Reading, Format_Unicode), Failure);
  EXPECT_THROW(file->Read_Bytes([](std::string_view) {}), Failure);
  EXPECT_EQ(Machine.Names_In(u""), Names());
}

TEST_F(Files_Contract, A_Failure_Names_The_Path_Below_The_Root_And_Why) {
  Machine.Plant_Folder(u"in");
  for (const Text name : {u"in/file", u"in/taken"}) Machine.Plant(name, "x");
  const auto file = Files().GetFile(Path(u"in\\FILE"));
  const auto move = [&] { file->Move(Path(u"in\\taken")); };
  const auto replace = [&] { Write(Path(u"in\\file"), u"new"); };
  EXPECT_EQ(Reason([&] { Files().GetFile(Path(u"none")); }), u"no file " + Path(u"none"));
  EXPECT_EQ(Reason([&] { Files().GetFolder(Path(u"none")); }), u"no folder " + Path(u"none"));
  EXPECT_TRUE(Reason(move).starts_with(u"in\\taken: "));
  EXPECT_GT(Reason(move).size(), 15u);
  Machine.Make_Read_Only(u"in/file");
  EXPECT_EQ(Reason(replace), u"in\\file: read-only");
  Files().DeleteFile(Path(u"in\\file"), true);
  EXPECT_EQ(Reason([&] { file->State(); }), u"in\\file: has gone");
  const auto lock = Files().Lock(Path(u"in"));
  EXPECT_EQ(Reason([&] { Files().Lock(Path(u"in")); }), Locked_By_Another);
  EXPECT_NO_THROW(Files().Set_Root(u"a\0b"s));
  EXPECT_FALSE(Files().FolderExists(u"a\0b\\routes"s));
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
  file->Move(Path(u"to\\free"));
  EXPECT_EQ(Machine.Bytes(u"to/free"), "new");
  EXPECT_EQ(Machine.Names_In(u""), Names({u"to"}));
  EXPECT_EQ(Machine.Names_In(u"to"), Names({u"free", u"taken"}));
}

TEST_F(Files_Contract, Move_To_Another_Volume_Takes_All_Along_But_Not_Onto_A_File) {
  const auto other = Make_Test_Folder(true);
  if (!other) GTEST_SKIP() << "there is no other volume";
  const std::string bytes(3'000'001, 'x');
  Machine.Plant(u"from", bytes);
  Machine.Make_Read_Only(u"from");
  const auto file = Files().GetFile(Path(u"from"));
  const File_State before = file->State();
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  file->Move(other->Path(u"to"));
  EXPECT_TRUE(other->Bytes(u"to") == bytes);
  EXPECT_EQ(file->State().Modified, before.Modified);
  EXPECT_NE(file->State().Identity, before.Identity);
  EXPECT_THROW(file->Delete(false), Failure) << "read-only";
  EXPECT_EQ(Machine.Names_In(u""), Names());
  Machine.Plant(u"from", "x");
  EXPECT_THROW(Files().GetFile(Path(u"from"))->Move(other->Path(u"to")), Failure);
  EXPECT_TRUE(other->Bytes(u"to") == bytes);
  EXPECT_EQ(other->Names_In(u""), Names({u"to"}));
  EXPECT_EQ(Machine.Bytes(u"from"), "x");
}

TEST_F(Files_Contract, A_Second_Name_Is_Of_The_Same_File_And_A_Copy_Or_A_Replaced_File_Is_Not) {
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
  file->Keep(Path(u"kept"));
  file->Keep(Path(u"third"));
  for (const Text_View taken : {u"kept", u"copy"}) {
    EXPECT_THROW(file->Keep(Path(taken)), Failure);
    EXPECT_THROW(file->Copy(Path(taken)), Failure);
  }
  EXPECT_EQ(state(u"copy").Modified, first.Modified);
  EXPECT_NE(state(u"copy").Identity, first.Identity);
  EXPECT_EQ(state(u"kept").Identity, first.Identity);
  EXPECT_NE(state(u"third").Identity, first.Identity) << "a file of two names is copied";
  EXPECT_EQ(file->State().Names, 2u);

  file->Move(Path(u"moved"));
  EXPECT_EQ(file->State().Identity, first.Identity);
  EXPECT_EQ(file->State().Modified, first.Modified);
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  Machine.Plant(u"moved", "in place");
  EXPECT_EQ(state(u"kept").Identity, first.Identity);
  EXPECT_GT(state(u"kept").Modified, first.Modified);
  Write(Path(u"moved"), u"a file of its own");
  EXPECT_NE(state(u"moved").Identity, first.Identity);
  EXPECT_EQ(state(u"kept").Names, 1u);
  Files().DeleteFile(Path(u"moved"), true);
  EXPECT_EQ(Machine.Names_In(u""), Names({u"copy", u"kept", u"third"}));
  EXPECT_EQ(Machine.Bytes(u"kept"), "in place");
  EXPECT_EQ(Machine.Bytes(u"copy"), "first");
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
