// What the files of a Windows machine do beyond what every back end does.

#include "platform/windows/win32.h"
#include "windows_files_fixture.h"

namespace rivelt {
namespace {

class Windows_Files_Test : public Files_Test {
 protected:
  Windows_Files_Test() : Files_Test(std::make_unique<Windows_Machine>()) {}

  std::wstring Native(Text_View name) const {
    return static_cast<const Windows_Machine&>(*Machine).Native(name);
  }
  Owned_Handle Hold_Open(Text_View name, DWORD access, DWORD sharing) const {
    return Owned_Handle(CreateFileW(Native(name).c_str(), access, sharing, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
  }
};

TEST_F(Windows_Files_Test, A_File_That_Another_Program_Holds_Is_A_Failure_With_Nothing_Lost) {
  Machine->Plant(u"held", "held");
  Machine->Plant(u"free", "free");
  const auto held = Files().GetFile(Path(u"held"));
  {
    const Owned_Handle holder = Hold_Open(u"held", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ);
    EXPECT_THROW(held->OpenAsTextStream(For_Reading, Format_Unicode), Failure) << "half written";
  }
  const Owned_Handle holder = Hold_Open(u"held", GENERIC_READ, FILE_SHARE_READ);
  EXPECT_NO_THROW(held->OpenAsTextStream(For_Reading, Format_Unicode)) << "only read";
  EXPECT_THROW(held->Delete(true), Failure);
  EXPECT_THROW(held->Move(Path(u"moved")), Failure);
  EXPECT_THROW(Write(Path(u"held"), u"new"), Failure);
  EXPECT_THROW(Files().GetFile(Path(u"free"))->Move(Path(u"held")), Failure);
  EXPECT_EQ(Machine->Names(u""), Names({u"free", u"held"}));
  EXPECT_EQ(Machine->Bytes(u"held"), "held");
  EXPECT_EQ(Machine->Bytes(u"free"), "free");
}

TEST_F(Windows_Files_Test, A_Read_Only_File_That_Is_Held_Stays_Read_Only) {
  Machine->Plant(u"held", "x");
  Machine->Make_Read_Only(u"held");
  const Owned_Handle holder = Hold_Open(u"held", GENERIC_READ, FILE_SHARE_READ);
  EXPECT_THROW(Files().DeleteFile(Path(u"held"), true), Failure);
  EXPECT_TRUE(GetFileAttributesW(Native(u"held").c_str()) & FILE_ATTRIBUTE_READONLY);
}

TEST_F(Windows_Files_Test, Paths_Longer_Than_The_Old_Limit_Work_Throughout) {
  Text folder;
  for (int level = 0; level < 5; ++level) {
    folder += (folder.empty() ? u"" : u"\\") + Text(100, u'd');
    Files().CreateFolder(Path(folder));
  }
  Write(Path(folder + u"\\a.w"), u"text");
  const auto files = Files().GetFolder(Path(folder))->Files();
  ASSERT_EQ(files.Count(), 1);
  const auto& file = *files.begin();
  EXPECT_EQ(file->OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll(), u"\u6574\u7478");
  file->Move(Path(folder + u"\\b.w"));
  Files().DeleteFile(Path(folder + u"\\b.w"), true);
  EXPECT_EQ(Machine->Names(folder), Names());
}

TEST_F(Windows_Files_Test, Relative_Paths_Start_At_The_Working_Folder) {
  Machine->Plant_Folder(u"global");
  Machine->Plant_Folder(u"tools");
  Machine->Plant(u"global/tsection.dat", "A");
  wchar_t former[MAX_PATH + 1] = {};
  GetCurrentDirectoryW(MAX_PATH + 1, former);
  ASSERT_TRUE(SetCurrentDirectoryW(To_Wide(Path(u"tools")).c_str()));
  EXPECT_NO_THROW(Files().GetFile(u"..\\global\\tsection.dat"));
  EXPECT_EQ(Files().GetFolder(u"..")->SubFolders().Count(), 2);
  SetCurrentDirectoryW(former);
}

TEST_F(Windows_Files_Test, Narrow_Text_Has_A_Question_Mark_For_Each_Character_Lacking) {
  Write(Path(u"log.txt"), u"\u00e9 \u221e \u7dda \U0001F682 \xd800 end\r\n");
  const std::string bytes = Machine->Bytes(u"log.txt");
  if (GetACP() == 1252) {
    EXPECT_EQ(bytes, "\xe9 ? ? ? ? end\r\n");
  } else {
    EXPECT_TRUE(bytes.ends_with(" end\r\n"));
  }
}

TEST_F(Windows_Files_Test, Devices_Are_No_Files) {
  for (const Text_View name : {u"NUL", u"\\\\.\\pipe\\x", u"C:\\CON"}) {
    EXPECT_THROW(Files().GetFile(name), Failure);
    EXPECT_THROW(Files().CreateTextFile(name, true, true), Failure);
    EXPECT_FALSE(Files().FolderExists(name));
  }
}

TEST_F(Windows_Files_Test, A_Kept_File_Outlives_Its_Other_Name_And_A_Copy_Is_A_File_Of_Its_Own) {
  Machine->Plant(u"a.w", "first");
  const auto file = Files().GetFile(Path(u"a.w"));
  file->Keep(Path(u"kept"));
  file->Copy(Path(u"copy"));
  for (const Text_View taken : {u"kept", u"copy"}) {
    EXPECT_THROW(file->Keep(Path(taken)), Failure);
    EXPECT_THROW(file->Copy(Path(taken)), Failure);
  }
  EXPECT_EQ(file->Size(), 5u);
  Write(Path(u"a.w"), u"other");
  EXPECT_EQ(Machine->Bytes(u"kept"), "first");
  Files().DeleteFile(Path(u"a.w"), true);
  EXPECT_FALSE(Files().FileExists(Path(u"a.w")));
  EXPECT_TRUE(Files().FileExists(Path(u"KEPT")));
  EXPECT_EQ(Machine->Bytes(u"kept"), "first");
  EXPECT_EQ(Machine->Bytes(u"copy"), "first");
}

TEST_F(Windows_Files_Test, Folders_Are_Renamed_Locked_And_Removed) {
  Machine->Plant_Folder(u"one");
  Machine->Plant_Folder(u"taken");
  Machine->Plant(u"one/a.w", "x");
  EXPECT_THROW(Files().MoveFolder(Path(u"one"), Path(u"taken")), Failure);
  EXPECT_THROW(Files().DeleteFolder(Path(u"one")), Failure) << "not empty";
  EXPECT_NO_THROW(Files().Flush(Path(u"one")));
  EXPECT_THROW(Files().Flush(Path(u"none")), Failure);
  {
    const auto lock = Files().Lock(Path(u"one"));
    EXPECT_THROW(Files().Lock(Path(u"taken\\..\\ONE")), Failure);
    EXPECT_NO_THROW(Files().Lock(Path(u"taken")));
    EXPECT_TRUE(lock->In_Force());
    Files().MoveFolder(Path(u"one"), Path(u"two"));
    EXPECT_FALSE(lock->In_Force());
    Files().CreateFolder(Path(u"one"));
    EXPECT_FALSE(lock->In_Force());
  }
  EXPECT_NO_THROW(Files().Lock(Path(u"two")));
  Files().DeleteFolder(Path(u"one"));
  EXPECT_EQ(Machine->Names(u""), Names({u"taken", u"two"}));
}

// A second volume, if the machine names one in the environment.
TEST_F(Windows_Files_Test, Move_To_Another_Volume_Moves_Or_Leaves_All_As_It_Was) {
  wchar_t volume[MAX_PATH + 1] = {};
  if (GetEnvironmentVariableW(L"RIVELT_TEST_VOLUME", volume, MAX_PATH + 1) == 0) {
    GTEST_SKIP() << "RIVELT_TEST_VOLUME names no folder on another volume";
  }
  const Text target = From_Wide(volume) + u"\\rivelt-moved.w";
  Machine->Plant(u"a.w", std::string(3'000'000, 'x'));
  FILETIME written{};
  GetFileTime(Hold_Open(u"a.w", GENERIC_READ, FILE_SHARE_READ).get(), nullptr, nullptr, &written);
  ASSERT_FALSE(MoveFileExW(Native(u"a.w").c_str(), To_Wide(target).c_str(), 0));
  ASSERT_EQ(GetLastError(), DWORD{ERROR_NOT_SAME_DEVICE});

  const auto file = Files().GetFile(Path(u"a.w"));
  {
    const Owned_Handle holder = Hold_Open(u"a.w", GENERIC_READ, FILE_SHARE_READ);
    EXPECT_THROW(file->Move(target), Failure);
    EXPECT_THROW(Files().GetFile(target), Failure);
    EXPECT_EQ(Machine->Names(u""), Names({u"a.w"}));
  }
  file->Move(target);
  EXPECT_EQ(Machine->Names(u""), Names());
  Owned_Handle moved(CreateFileW(To_Wide(target).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                 OPEN_EXISTING, 0, nullptr));
  FILETIME moved_written{};
  GetFileTime(moved.get(), nullptr, nullptr, &moved_written);
  EXPECT_EQ(CompareFileTime(&written, &moved_written), 0);
  EXPECT_EQ(GetFileSize(moved.get(), nullptr), 3'000'000u);
  moved.reset();
  Machine->Plant(u"b.w", "other");
  EXPECT_THROW(Files().GetFile(Path(u"b.w"))->Move(target), Failure) << "the target exists";
  EXPECT_EQ(Machine->Names(u""), Names({u"b.w"}));
  file->Delete(true);
}

// Ends itself in the middle of writing when it is started again by the test.
TEST_F(Windows_Files_Test, The_End_Of_The_Process_In_Between_Leaves_Nothing_Of_A_File) {
  wchar_t ordered[MAX_PATH + 1] = {};
  if (GetEnvironmentVariableW(L"RIVELT_TEST_END_AT", ordered, MAX_PATH + 1) != 0) {
    const auto stream = Files().CreateTextFile(From_Wide(ordered), true, true);
    stream->Write(Text(100'000, u'x'));
    TerminateProcess(GetCurrentProcess(), 7);
  }
  Machine->Plant(u"old.w", "before");
  SetEnvironmentVariableW(L"RIVELT_TEST_END_AT", To_Wide(Path(u"old.w")).c_str());
  wchar_t program[MAX_PATH + 1] = {};
  GetModuleFileNameW(nullptr, program, MAX_PATH + 1);
  std::wstring line = std::wstring(L"\"") + program +
                      L"\" --gtest_filter=Windows_Files_Test.The_End_Of_The_Process*";
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION process{};
  ASSERT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                             &start, &process));
  SetEnvironmentVariableW(L"RIVELT_TEST_END_AT", nullptr);
  const Owned_Handle thread(process.hThread);
  const Owned_Handle child(process.hProcess);
  WaitForSingleObject(child.get(), 60'000);
  DWORD status = 0;
  GetExitCodeProcess(child.get(), &status);
  EXPECT_EQ(status, 7u);
  EXPECT_EQ(Machine->Names(u""), Names({u"old.w"}));
  EXPECT_EQ(Machine->Bytes(u"old.w"), "before");
}

}  // namespace
}  // namespace rivelt
