#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/fsuid.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <functional>
#include <thread>

#include "machine_folder.h"
#include "platform/linux/files.h"
#include "text/utf8.h"

namespace rivelt {

std::filesystem::path To_Native(Text_View path) {
  return To_Original_Bytes(path);
}
Text From_Native(const std::filesystem::path& path) {
  return From_Utf8(path.native());
}
std::unique_ptr<File_System_Object> Files_Of_Machine(const std::filesystem::path& wine_prefix) {
  return std::make_unique<Linux_File_System>(wine_prefix.native());
}
std::unique_ptr<Test_Folder> Make_Test_Folder() {
  return std::make_unique<Machine_Folder>();
}

namespace {

namespace fs = std::filesystem;

using Linux_Files = Machine_Files_Test;

// A folder on another file system, for the tests that need two.
class Linux_Files_Across_File_Systems : public Linux_Files {
 protected:
  void SetUp() override {
    struct stat here {};
    struct stat there {};
    stat(Native("").c_str(), &here);
    stat(Other.Native("").c_str(), &there);
    if (here.st_dev == there.st_dev) GTEST_SKIP() << "/dev/shm is no other file system";
  }
  Machine_Folder Other{fs::exists("/dev/shm") ? "/dev/shm" : testing::TempDir()};
};

// Runs the body in a thread, so that what is taken from the thread comes back.
void Run_Without(const std::function<bool()>& take_away, const std::function<void()>& body) {
  bool is_taken = false;
  std::thread([&] {
    is_taken = take_away();
    if (is_taken) body();
  }).join();
  if (!is_taken) GTEST_SKIP() << "the system does not let a thread give this up";
}

// What becomes of every call of that number with these bits in its third argument.
bool Refuse(unsigned call, unsigned outcome, unsigned bits = 0) {
  sock_filter program[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call, 0, 4),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args[2])),
      BPF_STMT(BPF_ALU | BPF_AND | BPF_K, bits),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, bits, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, outcome),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  };
  const sock_fprog filter = {std::size(program), program};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

// The calls that simple file systems lack: files without a name, and renaming onto a free name.
bool Give_Up_Rare_Calls() {
  return Refuse(SYS_renameat2, SECCOMP_RET_ERRNO | EINVAL) &&
         Refuse(SYS_openat, SECCOMP_RET_ERRNO | EINVAL, O_TMPFILE & ~O_DIRECTORY);
}

bool Give_Up_Being_Root() {
  constexpr uid_t nobody = 65534;
  if (geteuid() == 0) setfsuid(nobody);
  return geteuid() != 0 || static_cast<uid_t>(setfsuid(nobody)) == nobody;
}

TEST_F(Linux_Files, Of_Names_That_Differ_In_Case_Only_As_Spelled_Wins_Else_The_First_Of_The_Walk) {
  for (const Text name : {u"b.dat", u"B.dat", u"b.DAT", u"c.DAT"}) Machine.Plant(name, "");
  fs::create_symlink("nowhere", Native("C.dat"));
  const auto found = [&](Text_View name) { return Files().GetFile(Path(name))->name(); };
  EXPECT_EQ(found(u"b.DAT"), u"b.DAT");
  EXPECT_EQ(found(u"B.DAT"), u"B.dat");
  EXPECT_EQ(found(u"c.dat"), u"c.DAT");
}

TEST_F(Linux_Files, Folders_That_Differ_In_Case_Only_Are_One_Below_The_Root_And_As_Spelled_Above) {
  for (const Text name : {u"in", u"IN", u"In", u"in/world", u"in/World", u"in/World/a.w"})
    Machine.Plant_Folder(name);
  Machine.Plant(u"in/WORLD", "a file");
  Files().Set_Root(Path(u"in"));
  for (const Text folder : {u"world", u"World", u"wORLD"}) {
    Write(Path(u"in\\" + folder + u"\\" + folder + u".w"), u"x");
    EXPECT_THROW(Files().CreateFolder(Path(u"in\\" + folder)), Failure);
  }
  EXPECT_EQ(Files().GetFolder(Path(u"in\\world"))->Files().Count(), 3);
  EXPECT_EQ(Machine.Names_In(u"in/world"), Names());
  EXPECT_EQ(Names_Of_Items(Files().GetFolder(Path(u"in"))->SubFolders()), Names({u"World"}));

  fs::rename(Native("in/World"), Native("in/other"));  // what has been found before is gone
  for (const Text folder : {u"in\\World", u"IN", u"In"}) Write(Path(folder + u"\\c.w"), u"x");
  for (const Text folder : {u"in/world", u"IN", u"In"})
    EXPECT_EQ(Machine.Names_In(folder), Names({u"c.w"}));
}

TEST_F(Linux_Files, Drive_Letters_Lead_Through_The_Links_Of_The_Prefix) {
  for (const Text name : {u"dosdevices", u"drive_c", u"drive_c/Games"}) Machine.Plant_Folder(name);
  fs::create_symlink("../drive_c", Native("dosdevices/c:"));
  for (const Text path : {u"C:\\games\\a.dat", u"c:/Games/b.dat", u"C:\\\\GAMES\\c.dat"})
    Write(path, u"x");
  EXPECT_EQ(Machine.Names_In(u"drive_c/Games"), Names({u"a.dat", u"b.dat", u"c.dat"}));
  EXPECT_TRUE(Files().FolderExists(u"C:\\"));
  EXPECT_EQ(Names_Of_Items(Files().GetFolder(u"c:")->SubFolders()), Names({u"Games"}));
  EXPECT_FALSE(Files().FolderExists(u"D:\\Games"));
}

TEST_F(Linux_Files, Links_Count_As_What_They_Lead_To) {
  Machine.Plant_Folder(u"folder");
  Machine.Plant(u"file", "A");
  for (const std::string target : {"folder", "file", "none", "to_self"})
    fs::create_symlink(target, Native(target == "to_self" ? target : "to_" + target));
  ASSERT_EQ(mkfifo(Native("fifo").c_str(), 0600), 0);
  const auto root = Files().GetFolder(Path(u""));
  EXPECT_EQ(Names_Of_Items(root->Files()), Names({u"file", u"to_file"}));
  EXPECT_EQ(Names_Of_Items(root->SubFolders()), Names({u"folder", u"to_folder"}));
  for (const Text name : {u"fifo", u"to_none", u"to_self"}) {
    EXPECT_THROW(Files().GetFile(Path(name)), Failure);
    EXPECT_THROW(Files().DeleteFile(Path(name), true), Failure);
  }
  EXPECT_THROW(Write(Path(u"fifo"), u"x"), Failure);
  Write(Path(u"to_file"), u"B");
  EXPECT_EQ(Machine.Bytes(u"file"), "B");
  const auto link = Files().GetFile(Path(u"to_file"));
  EXPECT_EQ(link->State().Identity, Files().GetFile(Path(u"file"))->State().Identity);
  link->Keep(Path(u"kept"));
  EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(Native("kept"))));
  EXPECT_NE(Files().GetFile(Path(u"kept"))->State().Identity, link->State().Identity);
  link->Move(Path(u"folder\\moved"));
  EXPECT_EQ(Machine.Bytes(u"folder/moved"), "B");
}

TEST_F(Linux_Files, ReadAll_A_File_Of_Two_To_The_31_Units_Is_A_Failure) {
  Machine.Plant(u"huge", "");
  fs::resize_file(Native("huge"), 0xFFFFFFFF);
  EXPECT_THROW(Read(Path(u"huge")), Failure);
}

TEST_F(Linux_Files, CreateTextFile_Over_A_File_Keeps_Its_Permissions) {
  Machine.Plant(u"private", "old");
  fs::permissions(Native("private"), fs::perms(0600));
  Write(Path(u"private"), u"new");
  EXPECT_EQ(fs::status(Native("private")).permissions(), fs::perms(0600));
  EXPECT_EQ(Machine.Bytes(u"private"), "new");
}

TEST_F(Linux_Files, On_A_Simple_File_System_Writing_And_Moving_Keep_Their_Promise) {
  Run_Without(Give_Up_Rare_Calls, [&] {
    Machine.Plant(u"old", "old");
    Files().CreateTextFile(Path(u"dropped"), true, false)->Write(u"x");
    Files().CreateTextFile(Path(u"old"), true, false)->Write(u"x");
    EXPECT_EQ(Machine.Names_In(u""), Names({u"old"}));
    Write(Path(u"new"), u"new");
    EXPECT_THROW(Files().GetFile(Path(u"new"))->Move(Path(u"old")), Failure);
    EXPECT_EQ(Machine.Bytes(u"old"), "old");
    Files().GetFile(Path(u"new"))->Move(Path(u"moved"));
    EXPECT_EQ(Machine.Names_In(u""), Names({u"moved", u"old"}));
    const auto stream = Files().CreateTextFile(Path(u"late"), false, false);
    Machine.Plant(u"late", "theirs");
    EXPECT_THROW(stream->Close(), Failure);
    EXPECT_EQ(Machine.Bytes(u"late"), "theirs");
  });
}

TEST_F(Linux_Files, What_The_Disk_Refuses_Is_A_Failure_And_Leaves_No_File) {
  Run_Without([] { return Refuse(SYS_writev, SECCOMP_RET_ERRNO | EIO); },
              [&] {
                const auto stream = Files().CreateTextFile(Path(u"a.w"), true, true);
                EXPECT_THROW(stream->Write(u"x"), Failure);
                EXPECT_THROW(stream->Close(), Failure);
              });
  EXPECT_EQ(Machine.Names_In(u""), Names());
  Run_Without([] { return Refuse(SYS_syncfs, SECCOMP_RET_ERRNO | EIO); },
              [&] { EXPECT_THROW(Files().Flush(Path(u"")), Failure); });
}

TEST_F(Linux_Files, What_Cannot_Be_Told_Is_A_Failure_And_A_Name_With_A_Backslash_In_No_Walk) {
  Machine.Plant_Folder(u"closed");
  Machine.Plant_Folder(u"closed/inner");
  Machine.Plant(u"closed/a.w", "");
  std::ofstream(Native("closed/b\\c.w"));
  EXPECT_EQ(Names_Of_Items(Files().GetFolder(Path(u"closed"))->Files()), Names({u"a.w"}));
  fs::permissions(Native("closed"), fs::perms(0644));
  Run_Without(Give_Up_Being_Root, [&] {
    EXPECT_THROW(Files().FolderExists(Path(u"closed\\inner")), Failure);
    EXPECT_THROW(Files().FindFile(Path(u"closed\\a.w")), Failure);
  });
  fs::permissions(Native("closed"), fs::perms(0700));
}

TEST_F(Linux_Files_Across_File_Systems,
       Move_Takes_Content_Permissions_And_Time_Along_But_Not_Onto_A_File) {
  Machine.Plant(u"from", std::string(3000001, 'x'));
  Machine.Make_Read_Only(u"from");
  const auto time = fs::last_write_time(Native("from")) - std::chrono::hours(100);
  fs::last_write_time(Native("from"), time);
  Files().GetFile(Path(u"from"))->Move(Other.Path(u"to"));
  EXPECT_EQ(Machine.Names_In(u""), Names());
  EXPECT_EQ(Other.Bytes(u"to"), std::string(3000001, 'x'));
  EXPECT_EQ(fs::status(Other.Native("to")).permissions(), fs::perms(0400));
  EXPECT_EQ(fs::last_write_time(Other.Native("to")), time);
  Machine.Plant(u"from", "x");
  EXPECT_THROW(Files().GetFile(Path(u"from"))->Move(Other.Path(u"to")), Failure);
  EXPECT_EQ(Other.Bytes(u"to").size(), 3000001u);
  EXPECT_EQ(Machine.Bytes(u"from"), "x");
}

TEST_F(Linux_Files_Across_File_Systems, Move_That_Fails_Leaves_The_File_And_No_Copy) {
  Machine.Plant(u"from", "x");
  fs::permissions(Other.Native(""), fs::perms(0777));
  const auto file = Files().GetFile(Path(u"from"));
  const auto fails = [&] { EXPECT_THROW(file->Move(Other.Path(u"to")), Failure); };
  Run_Without([] { return Refuse(SYS_linkat, SECCOMP_RET_ERRNO | EIO); }, fails);
  fs::permissions(Native(""), fs::perms(0555));
  Run_Without(Give_Up_Being_Root, fails);
  fs::permissions(Native(""), fs::perms(0700));
  EXPECT_EQ(Machine.Names_In(u""), Names({u"from"}));
  EXPECT_EQ(Machine.Bytes(u"from"), "x");
  EXPECT_EQ(Other.Names_In(u""), Names());
}

TEST_F(Linux_Files_Across_File_Systems, Move_That_Is_Killed_Leaves_The_File_Under_A_Name_Of_Ours) {
  Machine.Plant(u"from", "x");
  const pid_t child = fork();
  if (child == 0) {
    if (Refuse(SYS_linkat, SECCOMP_RET_KILL_PROCESS))
      Files().GetFile(Path(u"from"))->Move(Other.Path(u"to"));
    _exit(0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  if (WIFEXITED(status)) GTEST_SKIP() << "the system does not let a process give this up";
  const Names left = Machine.Names_In(u"");
  ASSERT_EQ(left.size(), 1u);
  EXPECT_TRUE(left[0].starts_with(Temporary_Prefix));
  EXPECT_EQ(Machine.Bytes(left[0]), "x");
  EXPECT_EQ(Other.Names_In(u""), Names());
}

}  // namespace
}  // namespace rivelt
