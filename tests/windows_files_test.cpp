// What the files of a Windows machine do beyond what every back end does.

#include "platform/windows/win32.h"

#include <process.h>

#include <cstdlib>
#include <thread>

#include "machine_folder.h"
#include "platform/windows/files.h"

namespace rivelt {

std::filesystem::path To_Native(Text_View path) {
  return To_Wide(path);
}
Text From_Native(const std::filesystem::path& path) {
  return From_Wide(path.native());
}
std::unique_ptr<File_System_Object> Files_Of_Machine(const std::filesystem::path&) {
  return Windows_Files();
}
std::unique_ptr<Test_Folder> Make_Test_Folder() {
  return std::make_unique<Machine_Folder>();
}

namespace {

class Windows_Files_Test : public Machine_Files_Test {
 protected:
  Owned_Handle Hold_Open(Text_View name, DWORD access) const {
    return Owned_Handle(CreateFileW(Native(To_Native(name)).c_str(), access, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  }
};

TEST_F(Windows_Files_Test, A_File_That_Another_Program_Holds_Is_A_Failure_With_Nothing_Lost) {
  Machine.Plant(u"held", "held");
  Machine.Plant(u"free", "free");
  const auto held = Files().GetFile(Path(u"held"));
  {
    const Owned_Handle holder = Hold_Open(u"held", GENERIC_READ | GENERIC_WRITE);
    EXPECT_THROW(held->OpenAsTextStream(For_Reading, Format_Unicode), Failure) << "half written";
  }
  Machine.Make_Read_Only(u"held");
  const Owned_Handle holder = Hold_Open(u"held", GENERIC_READ);
  EXPECT_NO_THROW(held->OpenAsTextStream(For_Reading, Format_Unicode)) << "only read";
  EXPECT_THROW(held->Delete(true), Failure);
  EXPECT_TRUE(GetFileAttributesW(Native("held").c_str()) & FILE_ATTRIBUTE_READONLY);
  EXPECT_TRUE(SetFileAttributesW(Native("held").c_str(), FILE_ATTRIBUTE_NORMAL));
  EXPECT_THROW(held->Delete(true), Failure);
  EXPECT_THROW(held->Move(Path(u"moved")), Failure);
  EXPECT_THROW(Write(Path(u"held"), u"new"), Failure);
  EXPECT_THROW(Files().GetFile(Path(u"free"))->Move(Path(u"held")), Failure);
  EXPECT_EQ(Machine.Names_In(u""), Names({u"free", u"held"}));
  EXPECT_EQ(Machine.Bytes(u"held"), "held");
  EXPECT_EQ(Machine.Bytes(u"free"), "free");
}

TEST_F(Windows_Files_Test, A_Folder_That_Is_Held_For_A_Moment_Is_Renamed_Once_It_Is_Let_Go) {
  Machine.Plant_Folder(u"held");
  Owned_Handle holder(CreateFileW(Native("held").c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  EXPECT_FALSE(MoveFileExW(Native("held").c_str(), Native("free").c_str(), 0));
  std::thread scanner([&] {
    Sleep(300);
    holder.reset();
  });
  EXPECT_NO_THROW(Files().MoveFolder(Path(u"held"), Path(u"free")));
  scanner.join();
  EXPECT_EQ(Machine.Names_In(u""), Names({u"free"}));
}

TEST_F(Windows_Files_Test, Paths_Longer_Than_The_Old_Limit_Work_Throughout) {
  Text folder;
  for (int level = 0; level < 5; ++level) {
    folder += (folder.empty() ? u"" : u"\\") + Text(100, u'd');
    Files().CreateFolder(Path(folder));
  }
  Write(Path(folder + u"\\a.w"), u"text");
  EXPECT_EQ(Names_Of_Items(Files().GetFolder(Path(folder))->Files()), Names({u"a.w"}));
  EXPECT_EQ(Read(Path(folder + u"\\a.w")), u"\u6574\u7478");
  Files().GetFile(Path(folder + u"\\a.w"))->Move(Path(folder + u"\\b.w"));
  Files().DeleteFile(Path(folder + u"\\b.w"), true);
  EXPECT_EQ(Files().GetFolder(Path(folder))->Files().Count(), 0);
  for (; !folder.empty(); folder.resize(folder.size() - std::min<std::size_t>(folder.size(), 101)))
    Files().DeleteFolder(Path(folder));
}

TEST_F(Windows_Files_Test, Relative_Paths_Start_At_The_Working_Folder) {
  Machine.Plant_Folder(u"tools");
  Machine.Plant(u"tsection.dat", "A");
  wchar_t former[MAX_PATH + 1] = {};
  GetCurrentDirectoryW(MAX_PATH + 1, former);
  ASSERT_TRUE(SetCurrentDirectoryW(To_Wide(Path(u"tools")).c_str()));
  EXPECT_NO_THROW(Files().GetFile(u"..\\tsection.dat"));
  EXPECT_EQ(Names_Of_Items(Files().GetFolder(u"..")->SubFolders()), Names({u"tools"}));
  SetCurrentDirectoryW(former);
}

TEST_F(Windows_Files_Test, Narrow_Text_Has_A_Question_Mark_For_Each_Character_Lacking) {
  Write(Path(u"log.txt"), u"\u00e9 \u221e \u7dda \U0001F682 \xd800 end\r\n");
  if (GetACP() != 1252) GTEST_SKIP() << "another code page";
  EXPECT_EQ(Machine.Bytes(u"log.txt"), "\xe9 ? ? ? ? end\r\n");
}

TEST_F(Windows_Files_Test, Devices_Are_No_Files) {
  for (const Text_View name : {u"NUL", u"\\\\.\\pipe\\x", u"C:\\CON"}) {
    EXPECT_THROW(Files().GetFile(name), Failure);
    EXPECT_THROW(Files().CreateTextFile(name, true, true), Failure);
    EXPECT_FALSE(Files().FolderExists(name));
  }
}

// A second volume, if the machine names one in the environment.
TEST_F(Windows_Files_Test, Move_To_Another_Volume_Moves_Or_Leaves_All_As_It_Was) {
  const wchar_t* volume = _wgetenv(L"RIVELT_TEST_VOLUME");
  if (volume == nullptr) GTEST_SKIP() << "RIVELT_TEST_VOLUME names no folder on another volume";
  const Text target = From_Wide(volume) + u"\\rivelt-moved.w";
  Machine.Plant(u"a.w", std::string(3'000'000, 'x'));
  ASSERT_FALSE(MoveFileExW(Native("a.w").c_str(), To_Wide(target).c_str(), 0));
  ASSERT_EQ(GetLastError(), DWORD{ERROR_NOT_SAME_DEVICE});

  const auto file = Files().GetFile(Path(u"a.w"));
  {
    const Owned_Handle holder = Hold_Open(u"a.w", GENERIC_READ);
    EXPECT_THROW(file->Move(target), Failure);
    EXPECT_EQ(Files().FindFile(target), nullptr);
    EXPECT_EQ(Machine.Names_In(u""), Names({u"a.w"}));
  }
  const File_State before = file->State();
  file->Move(target);
  EXPECT_EQ(file->State().Modified, before.Modified);
  EXPECT_EQ(file->State().Size, before.Size);
  EXPECT_EQ(Machine.Names_In(u""), Names());
  Machine.Plant(u"b.w", "other");
  EXPECT_THROW(Files().GetFile(Path(u"b.w"))->Move(target), Failure) << "the target exists";
  EXPECT_EQ(Machine.Names_In(u""), Names({u"b.w"}));
  file->Delete(true);
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
  wchar_t program[MAX_PATH + 1] = {};
  GetModuleFileNameW(nullptr, program, MAX_PATH + 1);
  EXPECT_EQ(_wspawnl(_P_WAIT, program, L"windows_test",
                     L"--gtest_filter=Windows_Files_Test.The_End_Of_The_Process*", nullptr),
            7);
  _wputenv_s(L"RIVELT_TEST_END_AT", L"");
  EXPECT_EQ(Machine.Names_In(u""), Names({u"old.w"}));
  EXPECT_EQ(Machine.Bytes(u"old.w"), "before");
}

}  // namespace
}  // namespace rivelt
