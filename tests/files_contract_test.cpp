// What the files of every machine do.

#include <chrono>
#include <cstdlib>
#include <numeric>
#include <thread>

#include "files_fixture.h"
#include "text/primitives.h"
#include "text/utf16.h"

namespace rivelt {
namespace {

using namespace std::literals;

using Files_Contract = Files_Test;

TEST_F(Files_Contract, ReadAll_Every_Kind_Of_Start_And_End_Gives_The_Units) {
  const std::pair<std::string, Text> cases[] = {
      {"", u""},
      {"\xFF\xFE"s + "A\0\x26\x20"s, u"A\u2026"},
      {"\xFE\xFF"s + "\0A\x20\x26"s, u"A\u2026"},
      {"A\0B\0"s, u"AB"},
      {"\xFF\xFE\xFF\xFE", u"\uFEFF"},
      {"\xFF", u"\xFF"},
      {"A\0\xE9"s, u"A\xE9"},
      {"\xFE\xFF"s + "\0AB"s, u"AB"},
      {"\xFF\xFE\0\0\0\xD8"s, Text{0, 0xD800}},
  };
  for (const auto& [bytes, units] : cases) {
    Machine.Plant(u"read.dat", bytes);
    EXPECT_EQ(Read(Path(u"read.dat")), units) << testing::PrintToString(bytes);
    EXPECT_EQ(Bytes(Path(u"read.dat")), bytes);
  }
}

TEST_F(Files_Contract, Write_In_Parts_Gives_One_Mark_And_Narrow_Text_None_And_Every_Unit_Survives) {
  Text every_unit(1'500'000, u'\0');
  std::iota(every_unit.begin(), every_unit.end(), u'\0');
  const auto wide = Files().CreateTextFile(Path(u"wide"), true, true);
  for (const Text_View part : {Text_View(u"A"), Text_View(every_unit)}) wide->Write(part);
  wide->Close();
  EXPECT_TRUE(Bytes(Path(u"wide")) ==
              "\xFF\xFE"
              "A\0"s +
                  std::string(Bytes_Of(every_unit)));
  EXPECT_TRUE(Read(Path(u"wide")) == u"A" + every_unit);
  Files().GetFile(Path(u"wide"))->Read_Bytes([](std::string_view piece) {
    EXPECT_LE(piece.size(), std::size_t{1} << 20);
  });
  Write(Path(u"narrow"), u"A\r\n");
  EXPECT_EQ(Bytes(Path(u"narrow")), "A\r\n");
}

TEST_F(Files_Contract, A_File_Is_There_From_Close_On_And_Replaces_One_Only_Where_It_May) {
  Machine.Plant(u"old.w", "a longer text that was here before");
  for (const Text name : {u"new.w", u"old.w"}) {
    const auto stream = Files().CreateTextFile(Path(name), true, true);
    stream->Write(Text(100000, u'x'));
    EXPECT_THROW(Files().GetFile(Path(u"new.w")), Failure);
    EXPECT_EQ(Bytes(Path(u"old.w")), "a longer text that was here before");
  }
  EXPECT_THROW(Write(Path(u"old.w"), u"new", false), Failure);
  EXPECT_EQ(Machine.Names_In(u""), Names({u"old.w"}));
  auto stream = Files().CreateTextFile(Path(u"new.w"), false, true);
  stream->Write(u"mine");
  Machine.Plant(u"new.w", "theirs");
  EXPECT_THROW(stream->Close(), Failure);
  EXPECT_EQ(Bytes(Path(u"new.w")), "theirs");
  stream.reset();
  Write(Path(u"old.w"), u"new");
  EXPECT_EQ(Bytes(Path(u"old.w")), "new");
  EXPECT_EQ(Machine.Names_In(u""), Names({u"new.w", u"old.w"}));
}

TEST_F(Files_Contract, What_Is_Missing_Or_Of_The_Wrong_Kind_Is_A_Failure_And_Changes_Nothing) {
  Machine.Plant(u"file", "bytes");
  Files().CreateFolder(Path(u"folder"));
  for (const Text& name :
       Names({u"none", u"none\\file", u"folder", u"file\\file", Text(300, u'n'), u"file\0"s})) {
    EXPECT_THROW(Files().GetFile(Path(name)), Failure);
    EXPECT_THROW(Files().DeleteFile(Path(name), true), Failure);
  }
  for (const Text& name : Names({u"none", u"file", Text(300, u'n'), u"folder\0"s})) {
    EXPECT_THROW(Files().GetFolder(Path(name)), Failure);
    EXPECT_FALSE(Files().FolderExists(Path(name)));
  }
  for (const Text& name : Names({u"folder", u"FOLDER", u"file", u"none\\folder", u"file\0"s}))
    EXPECT_THROW(Files().CreateFolder(Path(name)), Failure);
  for (const Text name : {u"none\\file", u"folder"}) EXPECT_THROW(Write(Path(name), u"x"), Failure);
  EXPECT_THROW(Files().GetFile(u""), Failure);
  EXPECT_TRUE(Files().FolderExists(Path(u"folder")));
  EXPECT_EQ(Machine.Names_In(u""), Names({u"file", u"folder"}));
  EXPECT_EQ(Bytes(Path(u"file")), "bytes");
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
  Files().GetFile(Path(u"äst\\ÄST"))->Move(Path(u"A B\\Moved.W"));
  EXPECT_EQ(Machine.Names_In(u"a b"), Names({u"Moved.W", u"a b"}));
  EXPECT_EQ(Machine.Names_In(u"Äst"), Names());
}

TEST_F(Files_Contract, The_Spelling_Tells_Files_Apart_Whose_Names_Differ_In_Case_Only) {
  for (const Text name : {u"b.w", u"B.w", u"b.W", u"c.W"}) Machine.Plant(name, "");
  if (Machine.Names_In(u"").size() == 2) GTEST_SKIP() << "one file has all spellings of a name";
  EXPECT_EQ(Files().GetFile(Path(u"b.W"))->name(), u"b.W");
  EXPECT_EQ(Files().GetFile(Path(u"B.W"))->name(), u"B.w") << "the first of a walk";
  EXPECT_EQ(Files().GetFile(Path(u"C.w"))->name(), u"c.W");
  Write(Path(u"B.W"), u"x");
  EXPECT_EQ(Machine.Names_In(u""), Names({u"B.W", u"B.w", u"b.W", u"b.w", u"c.W"}));
}

TEST_F(Files_Contract, A_Walk_Holds_What_Was_There_By_Name_And_By_Kind) {
  for (const Text name : {u"b.w", u"C.w", u"a.w", u"Ö.w", u"ö1.w", u"_.w", u"Z.w"})
    Machine.Plant(name, "");
  for (const Text name : {u"y", u"X", u"z.w.d"}) Files().CreateFolder(Path(name));
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
  for (const Text name : {u"a", u"b"}) Machine.Plant(name, "x");
  Machine.Make_Read_Only(u"a");
  const auto file = Files().GetFile(Path(u"a"));
  Files().GetFile(Path(u"b"))->Take_Mode_Of(Path(u"a"));
  EXPECT_THROW(file->Delete(false), Failure);
  EXPECT_THROW(Files().DeleteFile(Path(u"b"), false), Failure);
  EXPECT_THROW(Write(Path(u"b"), u"new"), Failure);
  EXPECT_EQ(Bytes(Path(u"b")), "x");
  file->Keep(Path(u"kept"));
  file->Delete(true);
  Files().DeleteFile(Path(u"b"), true);
  EXPECT_THROW(Files().DeleteFile(Path(u"kept"), false), Failure) << "still read-only";
  Files().DeleteFile(Path(u"kept"), true);
  EXPECT_THROW(file->Delete(true), Failure);
  EXPECT_THROW(file->Move(Path(u"to")), Failure);
  EXPECT_THROW(file->OpenAsTextStream(For_Reading, Format_Unicode), Failure);
  EXPECT_EQ(Machine.Names_In(u""), Names());
}

TEST_F(Files_Contract, A_Failure_Names_The_Path_Below_The_Root_And_Why) {
  Files().CreateFolder(Path(u"in"));
  for (const Text name : {u"in/file", u"in/taken"}) Machine.Plant(name, "x");
  const auto file = Files().GetFile(Path(u"in\\FILE"));
  EXPECT_EQ(Reason([&] { Files().GetFile(Path(u"none")); }), u"no file " + Path(u"none"));
  EXPECT_EQ(Reason([&] { Files().GetFolder(Path(u"none")); }), u"no folder " + Path(u"none"));
  const Text reason = Reason([&] { file->Move(Path(u"in\\taken")); });
  EXPECT_TRUE(reason.starts_with(u"in\\taken: ") && reason.size() > 15);
  Machine.Make_Read_Only(u"in/file");
  EXPECT_EQ(Reason([&] { Write(Path(u"in\\file"), u"new"); }), u"in\\file: read-only");
  Files().DeleteFile(Path(u"in\\file"), true);
  EXPECT_EQ(Reason([&] { file->State(); }), u"in\\file: has gone");
  const auto lock = Files().Lock(Path(u"in"));
  EXPECT_EQ(Reason([&] { Files().Lock(Path(u"in")); }), Locked_By_Another);
  EXPECT_NO_THROW(Files().Set_Root(u"a\0b"s));
  EXPECT_FALSE(Files().FolderExists(u"a\0b\\routes"s));
}

TEST_F(Files_Contract, Move_Onto_Something_Or_Into_Nowhere_Leaves_Both_And_Else_Takes_All_Along) {
  const std::string bytes(3'000'001, 'x');
  Files().CreateFolder(Path(u"to"));
  Machine.Plant(u"to/taken", "old");
  Machine.Plant(u"from", bytes);
  Machine.Make_Read_Only(u"from");
  const auto file = Files().GetFile(Path(u"from"));
  const std::int64_t modified = file->State().Modified;
  for (const Text& target : Names({u"to\\taken", u"to", u"none\\free", Text(300, u'n'), u"a\0b"s}))
    EXPECT_THROW(file->Move(Path(target)), Failure);
  std::vector<Text> targets = {Path(u"to\\free")};
  const auto other = Make_Test_Folder(true);
  if (other) targets.push_back(other->Path(u"to"));
  std::this_thread::sleep_for(20ms);
  for (const Text& target : targets) {
    file->Move(target);
    EXPECT_TRUE(Bytes(target) == bytes);
    EXPECT_EQ(file->State().Modified, modified);
    EXPECT_THROW(file->Delete(false), Failure) << "read-only";
    EXPECT_EQ(Machine.Names_In(u""), Names({u"to"}));
    Machine.Plant(u"from", "new");
    EXPECT_THROW(Files().GetFile(Path(u"from"))->Move(target), Failure);
    EXPECT_TRUE(Bytes(target) == bytes);
    EXPECT_EQ(Bytes(Path(u"from")), "new");
    Files().DeleteFile(Path(u"from"), true);
  }
  EXPECT_EQ(Machine.Names_In(u"to"), other ? Names({u"taken"}) : Names({u"free", u"taken"}));
  EXPECT_EQ(Bytes(Path(u"to\\taken")), "old");
}

TEST_F(Files_Contract, A_Second_Name_Is_Of_The_Same_File_And_A_Copy_Or_A_Replaced_File_Is_Not) {
  Machine.Plant(u"a.w", "first");
  const auto state = [&](Text_View name) { return Files().GetFile(Path(name))->State(); };
  const File_State first = state(u"a.w");
  EXPECT_EQ(first.Size, 5u);
  const auto now = std::chrono::system_clock::now().time_since_epoch() / 1ns;
  EXPECT_LT(std::abs(first.Modified - now), 3'600'000'000'000);
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
  std::this_thread::sleep_for(20ms);
  Machine.Plant(u"moved", "in place");
  EXPECT_EQ(state(u"kept").Identity, first.Identity);
  EXPECT_GT(state(u"kept").Modified, first.Modified);
  Write(Path(u"moved"), u"a file of its own");
  EXPECT_NE(state(u"moved").Identity, first.Identity);
  EXPECT_EQ(state(u"kept").Names, 1u);
  EXPECT_EQ(Bytes(Path(u"kept")), "in place");
  EXPECT_EQ(Bytes(Path(u"copy")), "first");
}

TEST_F(Files_Contract, Folders_Are_Renamed_Locked_And_Removed) {
  for (const Text name : {u"one", u"taken", u"one/inner"}) Files().CreateFolder(Path(name));
  Machine.Plant(u"one/inner/a.w", "x");
  for (const Text_View target : {u"taken", u"none\\free", u"one\\inner\\free"})
    EXPECT_THROW(Files().MoveFolder(Path(u"one"), Path(target)), Failure);
  EXPECT_THROW(Files().DeleteFolder(Path(u"one")), Failure) << "not empty";
  EXPECT_NO_THROW(Files().Flush(Path(u"one")));
  EXPECT_THROW(Files().Flush(Path(u"none")), Failure);
  auto lock = Files().Lock(Path(u"one"));
  EXPECT_THROW(Files().Lock(Path(u"taken\\..\\ONE")), Failure);
  EXPECT_NO_THROW(Files().Lock(Path(u"taken")));
  EXPECT_TRUE(lock->In_Force());
  Files().MoveFolder(Path(u"one"), Path(u"two"));
  EXPECT_EQ(Read(Path(u"two\\inner\\a.w")), u"x");
  EXPECT_FALSE(lock->In_Force());
  Files().CreateFolder(Path(u"one"));
  EXPECT_FALSE(lock->In_Force());
  lock.reset();
  EXPECT_NO_THROW(Files().Lock(Path(u"two")));
  Files().DeleteFolder(Path(u"one"));
  EXPECT_EQ(Machine.Names_In(u""), Names({u"taken", u"two"}));
}

}  // namespace
}  // namespace rivelt
