// What a route is after every failure and every end of the process that can come in the middle of
// its work: every operation on the disk fails, or is the last one, in turn.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "app/ignoring_failures.h"
#include "app/watched_files.h"
#include "installation.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

using enum Control;

// The end of the process: no handler of the program takes it for a failure.
struct Process_End {};

enum class Fault { None, Failure_Raised, Process_Ended };

struct Fault_At : File_Watcher {
  Fault_At(Fault kind, int operation) : Kind(kind), Operation(operation) {}

  void Before_Operation() override {
    ++Count;
    if (Kind == Fault::None || Count != Operation) return;
    Was_Hit = true;
    if (Kind == Fault::Failure_Raised) throw Failure();
    throw Process_End();
  }

  Fault Kind;
  int Operation;
  int Count = 0;
  bool Was_Hit = false;
};

using Route_State = std::map<Text, Text>;

const Route_State Before{{u"a.trk", u"Name ( A )"},
                         {u"tsection.dat", Text(Small_Local)},
                         {u"world\\w-1.w", Small_World(u"300", u"360")},
                         {u"world\\w-2.w", Small_World(u"301", u"361")},
                         {u"world\\w-3.w", u"Tr_Worldfile ( )"}};
const Route_State After{{u"a.trk", u"Name ( A )"},
                        {u"tsection.dat", Text(Moved_Local)},
                        {u"world\\w-1.w", Small_World(u"400", u"500")},
                        {u"world\\w-2.w", Small_World(u"401", u"501")},
                        {u"world\\w-3.w", u"Tr_Worldfile ( )"}};

// A run of the program from its start to its end or its interruption.
class Session {
 public:
  Session(Installation& train, Fault kind, int operation)
      : Train(train), Injected(kind, operation) {}

  template <class Work>
  void Run(const Work& work) {
    try {
      Window.Start(Root, [this] {
        return Watched_Files(std::make_unique<Memory_Files>(Train.Disk), Injected);
      });
      Window.Pick(cmbRoutes, u"A");
      work(*this);
    } catch (const Process_End&) {
      Ended_Early = true;
    }
    *Train.Disk.Is_Locked = false;  // as the end of a process does
  }

  // Whether the user has been told that something went wrong.
  bool Reported() const {
    return std::ranges::any_of(Window.Boxes(), [](const Memory_Window::Shown_Box& box) {
      return box.Style == Style_Critical;
    });
  }

  Installation& Train;
  Fault_At Injected;
  Fixed_Registry Root{"\\train"};
  Memory_Window Window;
  bool Ended_Early = false;
};

void Check_And_Update_Twice(Session& session) {
  session.Window.Press(cmdCheck);
  session.Window.Press(cmdUpdate);
  session.Window.Press(cmdUpdate);
}

void Nothing(Session&) {}

class Interruption : public testing::Test {
 protected:
  static void Put(Installation& train, const Route_State& route) {
    train.Global(Small_Catalogue);
    for (const auto& [path, content] : route) train.Put(u"routes\\A\\" + path, content);
  }

  static Route_State Route_Of(const Installation& train) {
    return Files_Below(train, u"\\train\\routes\\A");
  }

  static Route_State Files_Below(const Installation& train, const Text& folder) {
    Route_State files;
    for (const Memory_Disk::Item* file : train.Disk.In_Folder(folder, false)) {
      files[Memory_Disk::Name(file->Path)] = file->Content();
    }
    for (const Memory_Disk::Item* inner : train.Disk.In_Folder(folder, true)) {
      const Text name = Memory_Disk::Name(inner->Path);
      for (const auto& [path, content] : Files_Below(train, inner->Path)) {
        files[name + u"\\" + path] = content;
      }
    }
    return files;
  }

  static Lines Backup_Folders(const Installation& train) {
    Lines names;
    for (const Memory_Disk::Item* folder : train.Disk.In_Folder(u"\\train\\Quenby\\backup", true)) {
      names.push_back(Memory_Disk::Name(folder->Path));
    }
    return names;
  }

  static bool Is_Unfinished(const Installation& train) {
    return Backup_Folders(train) == Lines{u"A.unfinished"};
  }

  // The route is wholly before or wholly after, with its originals in a backup in that case, and
  // nothing unfinished is left.
  static void Expect_Whole(const Installation& train) {
    const Route_State route = Route_Of(train);
    EXPECT_TRUE(route == Before || route == After);
    const Lines backups = Backup_Folders(train);
    ASSERT_EQ(backups.size(), route == After ? 1u : 0u);
    if (route == Before) return;
    EXPECT_TRUE(backups[0].starts_with(u"A 2")) << To_Utf8(backups[0]);
    const Text kept = u"\\train\\Quenby\\backup\\" + backups[0];
    const Route_State originals{{u"tsection.dat", Before.at(u"tsection.dat")},
                                {u"w-1.w", Before.at(u"world\\w-1.w")},
                                {u"w-2.w", Before.at(u"world\\w-2.w")}};
    EXPECT_EQ(Files_Below(train, kept), originals);
  }

  // The number of operations of a session without a fault.
  template <class Work>
  static int Operations(Installation train, const Work& work) {
    Session session(train, Fault::None, 0);
    session.Run(work);
    return session.Injected.Count;
  }
};

TEST_F(Interruption, Any_Operation_Of_Check_And_Update_Leaves_The_Route_Whole_After_A_Restart) {
  Installation whole;
  Put(whole, Before);
  const int operations = Operations(whole, Check_And_Update_Twice);
  int unfinished = 0;
  for (const Fault fault : {Fault::Failure_Raised, Fault::Process_Ended}) {
    for (int operation = 1; operation <= operations; ++operation) {
      SCOPED_TRACE(testing::Message()
                   << "fault " << static_cast<int>(fault) << " at " << operation);
      Installation train = whole;
      Session session(train, fault, operation);
      session.Run(Check_And_Update_Twice);
      ASSERT_TRUE(session.Injected.Was_Hit);
      const bool was_unfinished = Is_Unfinished(train);
      unfinished += was_unfinished ? 1 : 0;
      EXPECT_TRUE(session.Reported() || session.Ended_Early || !was_unfinished);

      Session restart(train, Fault::None, 0);
      restart.Run(Nothing);
      const bool told =
          restart.Window.Log().find(
              u"Took back an update that had not finished: A\r\n\r\nSelect") != Text::npos;
      EXPECT_EQ(told, was_unfinished);
      Expect_Whole(train);
    }
  }
  EXPECT_GT(unfinished, 10);  // or the sweep has missed what it is for
  RecordProperty("operations", operations);
}

TEST_F(Interruption, Any_Operation_Of_A_Restart_Can_Be_Interrupted_In_Turn) {
  Installation whole;
  Put(whole, Before);
  const int operations = Operations(whole, Check_And_Update_Twice);
  for (int operation = 1; operation <= operations; ++operation) {
    Installation interrupted = whole;
    Session first(interrupted, Fault::Process_Ended, operation);
    first.Run(Check_And_Update_Twice);
    if (!Is_Unfinished(interrupted)) continue;
    const int restart_operations = Operations(interrupted, Nothing);
    for (const Fault fault : {Fault::Failure_Raised, Fault::Process_Ended}) {
      for (int second = 1; second <= restart_operations; ++second) {
        SCOPED_TRACE(testing::Message() << operation << ", then " << second);
        Installation train = interrupted;
        Session restart(train, fault, second);
        restart.Run(Nothing);
        Session last(train, Fault::None, 0);
        last.Run(Nothing);
        EXPECT_EQ(Route_Of(train), Before);
        EXPECT_EQ(Backup_Folders(train), Lines{});
      }
    }
  }
}

TEST_F(Interruption, A_Restore_Is_Whole_Or_Taken_Back_And_Can_Itself_Be_Restored) {
  Installation updated;
  Put(updated, Before);
  Session(updated, Fault::None, 0).Run(Check_And_Update_Twice);
  const auto restore = [](Session& session) {
    frmMain& form = session.Window.Form();
    Ignoring_Failures([&] { form.Restore_Backup(form.Route_Backups().List().back()); });
  };
  const int operations = Operations(updated, restore);
  for (const Fault fault : {Fault::None, Fault::Failure_Raised, Fault::Process_Ended}) {
    for (int operation = 1; operation <= operations; ++operation) {
      SCOPED_TRACE(testing::Message()
                   << "fault " << static_cast<int>(fault) << " at " << operation);
      Installation train = updated;
      Session session(train, fault, operation);
      session.Run(restore);
      Session(train, Fault::None, 0).Run(Nothing);
      const Route_State route = Route_Of(train);
      EXPECT_TRUE(route == Before || (route == After && fault != Fault::None));
      EXPECT_EQ(Backup_Folders(train).size(), route == Before ? 2u : 1u);
      if (route == Before) {
        Session(train, Fault::None, 0).Run(restore);
        EXPECT_EQ(Route_Of(train), After);
      }
    }
  }
}

TEST_F(Interruption, A_Failed_Update_Keeps_The_Rest_Staged_And_A_Full_Check_Takes_It_Back) {
  Installation train;
  Put(train, Before);
  Session session(train, Fault::None, 0);
  session.Run([&](Session& running) {
    running.Window.Press(cmdCheck);
    train.Disk.Remove(u"\\train\\routes\\A\\world\\w-2.w");
    for (int attempt = 0; attempt < 2; ++attempt) {
      running.Window.Press(cmdUpdate);
      EXPECT_EQ(running.Window.Boxes().back().Message, u"Had problems updating this route!");
      EXPECT_EQ(Lines_Of(running.Window.Log()), Lines{u"Updating: A, this will take some time"});
      EXPECT_EQ(train.Staged(), Lines{u"w-2.w"});
      EXPECT_TRUE(Is_Unfinished(train));
    }
    train.Disk.Remove(u"\\train\\Quenby\\tmp\\w-2.w");  // which does not make it a whole one
    running.Window.Press(cmdUpdate);
    EXPECT_TRUE(Is_Unfinished(train));
    running.Window.Select(optDynamic_1);
    running.Window.Press(cmdCheck);
    EXPECT_EQ(Lines_Of(running.Window.Log())[1], u"Took back an update that had not finished: A");
  });
  EXPECT_EQ(train.Content(u"routes\\A\\tsection.dat"), Small_Local);
  EXPECT_EQ(Backup_Folders(train), Lines{});
}

TEST_F(Interruption, What_Cannot_Be_Taken_Back_Stays_And_Is_Reported) {
  Installation train;
  Put(train, Before);
  train.Put(u"Quenby\\backup\\Gone.unfinished\\w-1.w", u"kept")
      .Put(u"Quenby\\tmp\\left.w", u"staged");
  Session session(train, Fault::None, 0);
  session.Run([&](Session& running) {
    EXPECT_NE(
        running.Window.Log().find(u"Could not take back an unfinished update: Gone\r\n\r\nSelect"),
        Text::npos);
    running.Window.Press(cmdCheck);
    EXPECT_TRUE(running.Window.Log().starts_with(u"Had problems in Do_Check!"));
  });
  EXPECT_EQ(train.Content(u"Quenby\\backup\\Gone.unfinished\\w-1.w"), u"kept");
  EXPECT_EQ(train.Staged(), Lines{u"left.w"});
}

TEST_F(Interruption, A_Second_Program_Is_Held_Off_And_Touches_Nothing) {
  Installation train;
  Put(train, Before);
  train.Put(u"Quenby\\tmp\\of the first.w", u"")
      .Put(u"Quenby\\backup\\A.unfinished\\w-1.w", u"kept");
  *train.Disk.Is_Locked = true;
  Session session(train, Fault::None, 0);
  session.Run([&](Session& running) {
    running.Window.Press(cmdUpdate);
    EXPECT_EQ(Lines_Of(running.Window.Log())[0], u"Had problems in Do_Check!");
  });
  EXPECT_EQ(train.Staged(), Lines{u"of the first.w"});
  EXPECT_EQ(train.Content(u"Quenby\\backup\\A.unfinished\\w-1.w"), u"kept");
  EXPECT_EQ(Route_Of(train), Before);
}

}  // namespace
}  // namespace rivelt
