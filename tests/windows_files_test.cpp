// What the files of a Windows machine do beyond what every back end does.

#include "platform/windows/win32.h"

#include <process.h>

#include <cstdlib>
#include <thread>

#include "machine_folder.h"
#include "platform/windows/files.h"

namespace rivelt {

namespace {

class Windows_Files_Test : public Files_Test {
 protected:
  Owned_Handle Hold_Open(Text_View name, DWORD access, DWORD sharing = FILE_SHARE_READ) const {
    const HANDLE held = CreateFileW(To_Wide(Path(name)).c_str(), access, sharing, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    EXPECT_NE(held, INVALID_HANDLE_VALUE);
    return Owned_Handle(held);
  }
};

TEST_F(Windows_Files_Test, A_File_That_Another_Program_Holds_Is_A_Failure_With_Nothing_Lost) {
  Machine.Plant(u"held", "held");
  const auto held = Files().GetFile(Path(u"held"));
  {
    const Owned_Handle holder = Hold_Open(u"held", GENERIC_READ | GENERIC_WRITE);
    EXPECT_THROW(held->OpenAsTextStream(For_Reading, Format_Unicode), Failure) << "half written";
  }
  Machine.Make_Read_Only(u"held");
  const Owned_Handle holder = Hold_Open(u"held", GENERIC_READ);
  EXPECT_NO_THROW(held->OpenAsTextStream(For_Reading, Format_Unicode)) << "only read";
  EXPECT_EQ(Reason([&] { held->Delete(true); }), u"held: used by another program");
  EXPECT_THROW(held->Delete(false), Failure) << "still read-only";
  if (const auto other = Make_Test_Folder(true)) {
    EXPECT_THROW(held->Move(other->Path(u"moved")), Failure);
    EXPECT_EQ(other->Names_In(u""), Names());
  }
  EXPECT_EQ(Machine.Names_In(u""), Names({u"held"}));
  EXPECT_EQ(Bytes(Path(u"held")), "held");
}

TEST_F(Windows_Files_Test, What_Is_Held_For_A_Moment_Is_Renamed_And_Deleted_Once_It_Is_Let_Go) {
  Files().CreateFolder(Path(u"folder"));
  Machine.Plant(u"file", "x");
  const auto while_scanned = [&](Text_View name, const auto& step) {
    std::thread scanner([held = Hold_Open(name, GENERIC_READ)]() mutable {
      Sleep(300);
      held.reset();
    });
    EXPECT_NO_THROW(step());
    scanner.join();
  };
  while_scanned(u"folder", [&] { Files().MoveFolder(Path(u"folder"), Path(u"free")); });
  while_scanned(u"file", [&] { Files().DeleteFile(Path(u"file"), true); });
  EXPECT_EQ(Machine.Names_In(u""), Names({u"free"}));

  Write(Path(u"file"), u"x");
  const Owned_Handle indexer =
      Hold_Open(u"file", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
  Files().DeleteFile(Path(u"file"), true);
  EXPECT_EQ(Files().FindFile(Path(u"file")), nullptr) << "the name is free though it is open";
  Write(Path(u"file"), u"new", false);
}

TEST_F(Windows_Files_Test, Paths_Longer_Than_The_Old_Limit_Work_Throughout) {
  const Text deep = Text(100, u'd') + u"\\" + Text(100, u'd') + u"\\" + Text(100, u'd');
  for (const std::size_t length : {100, 201, 302})
    Files().CreateFolder(Path(deep.substr(0, length)));
  Write(Path(deep + u"\\a.w"), u"text");
  EXPECT_EQ(Names_Of_Items(Files().GetFolder(Path(deep))->Files()), Names({u"a.w"}));
  Files().GetFile(Path(deep + u"\\a.w"))->Move(Path(deep + u"\\b.w"));
  EXPECT_EQ(Bytes(Path(deep + u"\\b.w")), "text");
  Files().DeleteFile(Path(deep + u"\\b.w"), true);
  for (const std::size_t length : {302, 201, 100})
    Files().DeleteFolder(Path(deep.substr(0, length)));
  EXPECT_EQ(Machine.Names_In(u""), Names());
}

TEST_F(Windows_Files_Test, Narrow_Text_Has_A_Question_Mark_For_Each_Character_Lacking) {
  Write(Path(u"log.txt"), u"\u00e9 \u221e \u7dda \U0001F682 \xd800 end\r\n");
  if (GetACP() != 1252) GTEST_SKIP() << "another code page";
  EXPECT_EQ(Bytes(Path(u"log.txt")), "\xe9 ? ? ? ? end\r\n");
}

TEST_F(Windows_Files_Test, Devices_Are_No_Files_And_Relative_Paths_Start_At_The_Working_Folder) {
  const auto working_folder = std::filesystem::current_path().filename();
  EXPECT_EQ(Files().GetFolder(u".")->name(), working_folder.u16string());
  for (const Text_View name : {u"NUL", u"\\\\.\\pipe\\x", u"C:\\CON"}) {
    EXPECT_THROW(Files().GetFile(name), Failure);
    EXPECT_THROW(Files().CreateTextFile(name, true, true), Failure);
    EXPECT_FALSE(Files().FolderExists(name));
  }
}

// Ends itself in the middle of writing when it is started again by the test.
TEST_F(Windows_Files_Test, The_End_Of_The_Process_In_Between_Leaves_Nothing_Of_A_File) {
  if (const wchar_t* ordered = _wgetenv(L"RIVELT_TEST_END_AT")) {
    const auto stream = Files().CreateTextFile(From_Wide(ordered), true, true);
    stream->Write(Text(100'000, u'x'));
    TerminateProcess(GetCurrentProcess(), 7);
  }
  Machine.Plant(u"old.w", "before");
  _wputenv_s(L"RIVELT_TEST_END_AT", To_Wide(Path(u"old.w")).c_str());
  EXPECT_EQ(_spawnl(_P_WAIT, _pgmptr, "windows_test", "--gtest_filter=*The_End_Of*", nullptr), 7);
  _wputenv_s(L"RIVELT_TEST_END_AT", L"");
  EXPECT_EQ(Machine.Names_In(u""), Names({u"old.w"}));
  EXPECT_EQ(Bytes(Path(u"old.w")), "before");
}

}  // namespace

std::unique_ptr<File_System_Object> Machine_Folder::Files() {
  return Windows_Files();
}
// The machine names its other volume in the environment.
std::unique_ptr<Test_Folder> Make_Test_Folder(bool elsewhere) {
  const char* volume = std::getenv("RIVELT_TEST_VOLUME");
  if (elsewhere && volume == nullptr) return nullptr;
  return std::make_unique<Machine_Folder>(elsewhere ? volume : testing::TempDir());
}

}  // namespace rivelt
