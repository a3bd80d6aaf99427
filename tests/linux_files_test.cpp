#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <functional>
#include <limits>

#include "machine_folder.h"
#include "platform/linux/files.h"

namespace rivelt {
namespace {

namespace fs = std::filesystem;

class Linux_Files : public Files_Test {
 protected:
  // Runs the body in a process that has given something up, which is to end with this status.
  void Run_Without(const std::function<bool()>& take_away, const std::function<void()>& body,
                   int expected = 0) {
    constexpr int not_taken = 77;
    const pid_t child = fork();
    if (child == 0) {
      if (!take_away()) _exit(not_taken);
      body();
      _exit(HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    if (WIFEXITED(status) && WEXITSTATUS(status) == not_taken)
      GTEST_SKIP() << "the system does not let a process give this up";
    EXPECT_EQ(WIFSIGNALED(status) ? WTERMSIG(status) : status, expected);
  }
};

constexpr unsigned Kills = 0;

// Every call of that number with these bits in its third argument has this error, or kills.
bool Refuse(unsigned call, unsigned error = EIO, unsigned bits = 0) {
  sock_filter program[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call, 0, 4),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args[2])),
      BPF_STMT(BPF_ALU | BPF_AND | BPF_K, bits),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, bits, 0, 1),
      BPF_STMT(BPF_RET | BPF_K,
               error == Kills ? SECCOMP_RET_KILL_PROCESS : SECCOMP_RET_ERRNO | error),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  };
  const sock_fprog filter = {std::size(program), program};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

// The calls that simple file systems lack: files without a name, and renaming onto a free name.
bool Give_Up_Rare_Calls() {
  return Refuse(SYS_renameat2, EINVAL) && Refuse(SYS_openat, EINVAL, O_TMPFILE & ~O_DIRECTORY);
}

TEST_F(Linux_Files, Folders_That_Differ_In_Case_Only_Are_One_Below_The_Root_And_As_Spelled_Above) {
  for (const Text name : {u"in", u"IN", u"In", u"in/world", u"in/World", u"in/World/a.w"})
    fs::create_directory(Path(name));
  Machine.Plant(u"in/WORLD", "a file");
  Files().Set_Root(Path(u"in"));
  for (const Text folder : {u"world", u"World", u"wORLD"}) {
    Write(Path(u"in\\" + folder + u"\\" + folder + u".w"), u"x");
    EXPECT_THROW(Files().CreateFolder(Path(u"in\\" + folder)), Failure);
  }
  EXPECT_EQ(Files().GetFolder(Path(u"in\\world"))->Files().Count(), 3);
  EXPECT_EQ(Machine.Names_In(u"in/world"), Names());
  EXPECT_EQ(Names_Of_Items(Files().GetFolder(Path(u"in"))->SubFolders()), Names({u"World"}));

  fs::rename(Path(u"in/World"), Path(u"in/other"));  // what has been found before is gone
  for (const Text folder : {u"in\\World", u"IN", u"In"}) Write(Path(folder + u"\\c.w"), u"x");
  for (const Text folder : {u"in/world", u"IN", u"In"})
    EXPECT_EQ(Machine.Names_In(folder), Names({u"c.w"}));
}

TEST_F(Linux_Files, Drive_Letters_Lead_Through_The_Links_Of_The_Prefix) {
  for (const Text name : {u"dosdevices", u"drive_c", u"drive_c/Games"})
    Files().CreateFolder(Path(name));
  fs::create_symlink("../drive_c", Path(u"dosdevices/c:"));
  for (const Text path : {u"C:\\games\\a.dat", u"c:/Games/b.dat", u"C:\\\\GAMES\\c.dat"})
    Write(path, u"x");
  EXPECT_EQ(Machine.Names_In(u"drive_c/Games"), Names({u"a.dat", u"b.dat", u"c.dat"}));
  EXPECT_EQ(Names_Of_Items(Files().GetFolder(u"c:")->SubFolders()), Names({u"Games"}));
  EXPECT_FALSE(Files().FolderExists(u"D:\\Games"));
}

TEST_F(Linux_Files, Links_Count_As_What_They_Lead_To_And_A_Replaced_File_Leaves_Its_Permissions) {
  Files().CreateFolder(Path(u"folder"));
  Machine.Plant(u"file", "A");
  for (const Text target : {u"folder", u"file", u"none"})
    fs::create_symlink(target, Path(u"to_" + target));
  fs::create_symlink("to_self", Path(u"to_self"));
  fs::create_symlink("none", Path(u"FILE"));
  Machine.Plant(u"folder\\file", "no path leads to a name with a separator in it");
  ASSERT_EQ(mkfifo(fs::path(Path(u"fifo")).c_str(), 0600), 0);
  EXPECT_EQ(Files().GetFile(Path(u"FILE"))->name(), u"file");
  const auto root = Files().GetFolder(Path(u""));
  EXPECT_EQ(Names_Of_Items(root->Files()), Names({u"file", u"to_file"}));
  EXPECT_EQ(Names_Of_Items(root->SubFolders()), Names({u"folder", u"to_folder"}));
  for (const Text name : {u"fifo", u"to_none", u"to_self"}) {
    EXPECT_THROW(Files().GetFile(Path(name)), Failure);
    EXPECT_THROW(Files().DeleteFile(Path(name), true), Failure);
  }
  EXPECT_THROW(Write(Path(u"fifo"), u"x"), Failure);
  fs::permissions(Path(u"file"), fs::perms(0604));
  Write(Path(u"to_file"), u"B");
  EXPECT_EQ(Bytes(Path(u"file")), "B");
  EXPECT_EQ(fs::status(Path(u"file")).permissions(), fs::perms(0604));
  const auto link = Files().GetFile(Path(u"to_file"));
  EXPECT_EQ(link->State().Identity, Files().GetFile(Path(u"file"))->State().Identity);
  link->Keep(Path(u"kept"));
  EXPECT_NE(Files().GetFile(Path(u"kept"))->State().Identity, link->State().Identity);
  link->Move(Path(u"folder\\moved"));
  EXPECT_EQ(Bytes(Path(u"folder/moved")), "B");
}

TEST_F(Linux_Files, A_Time_After_2262_Is_The_Last_And_A_File_Of_Two_To_The_31_Units_Is_A_Failure) {
  Machine.Plant(u"later", "");
  const timespec times[] = {{10'413'792'000, 0}, {10'413'792'000, 0}};  // the year 2300
  ASSERT_EQ(utimensat(AT_FDCWD, fs::path(Path(u"later")).c_str(), times, 0), 0);
  EXPECT_EQ(Files().GetFile(Path(u"later"))->State().Modified,
            std::numeric_limits<std::int64_t>::max());
  fs::resize_file(Path(u"later"), 0xFFFFFFFF);
  EXPECT_THROW(Read(Path(u"later")), Failure);
}

TEST_F(Linux_Files, On_A_Simple_File_System_The_Contract_Holds) {
  Run_Without(Give_Up_Rare_Calls, [] {
    execl("/proc/self/exe", "linux_test", "--gtest_filter=Files_Contract.*", nullptr);
    FAIL();
  });
}

TEST_F(Linux_Files, What_The_Disk_Refuses_Or_Does_Not_Tell_Is_A_Failure_And_Leaves_No_File) {
  Run_Without([] { return Refuse(SYS_write, ENOSPC); },
              [&] {
                const auto stream = Files().CreateTextFile(Path(u"a.w"), true, true);
                EXPECT_EQ(Reason([&] { stream->Write(u"x"); }), u"a.w: disk full");
                EXPECT_THROW(stream->Close(), Failure);
              });
  EXPECT_EQ(Machine.Names_In(u""), Names());
  Run_Without([] { return Refuse(SYS_syncfs); },
              [&] { EXPECT_THROW(Files().Flush(Path(u"")), Failure); });
  Run_Without([] { return Refuse(SYS_syncfs, EINVAL) && Refuse(SYS_flock, ENOLCK); },
              [&] {
                EXPECT_NO_THROW(Files().Flush(Path(u"")));
                EXPECT_TRUE(Files().Lock(Path(u""))->In_Force());
              });
  Run_Without([] { return Refuse(SYS_newfstatat); },
              [&] { EXPECT_THROW(Files().FolderExists(Path(u"none")), Failure); });
}

TEST_F(Linux_Files, Move_Across_File_Systems_That_Fails_Leaves_The_File_And_No_Copy) {
  const auto other = Make_Test_Folder(true);
  if (!other) GTEST_SKIP() << "there is no other file system";
  Machine.Plant(u"from", "x");
  const auto move = [&] { Files().GetFile(Path(u"from"))->Move(other->Path(u"to")); };
  const auto fails = [&] { EXPECT_THROW(move(), Failure); };
  Run_Without([] { return Refuse(SYS_linkat); }, fails);
  Run_Without([] { return Refuse(SYS_renameat2, EXDEV); }, fails);
  EXPECT_EQ(Machine.Names_In(u""), Names({u"from"}));
  Run_Without([] { return Refuse(SYS_linkat, Kills); }, move, SIGSYS);
  EXPECT_TRUE(IsSkipped() || Machine.Names_In(u"").at(0).starts_with(Temporary_Prefix));
  EXPECT_EQ(other->Names_In(u""), Names());
}

}  // namespace

std::unique_ptr<File_System_Object> Machine_Folder::Files() {
  return Files_Of_Linux(Root.native());
}
std::unique_ptr<Test_Folder> Make_Test_Folder(bool elsewhere) {
  struct stat here {};
  struct stat there {};
  stat(testing::TempDir().c_str(), &here);
  if (elsewhere && (stat("/dev/shm", &there) != 0 || here.st_dev == there.st_dev)) return nullptr;
  return std::make_unique<Machine_Folder>(elsewhere ? "/dev/shm" : testing::TempDir());
}

}  // namespace rivelt
