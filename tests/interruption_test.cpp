// What a route is after every failure, every end of the process and every loss of power that can
// come in the middle of an update, and after a person has changed the route before the program goes
// on.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>

#include "backup/backups.h"
#include "installation.h"
#include "programs/cli/watched_files.h"
#include "text/letter_case.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

using enum Control;

// The end of the process: no handler of the program takes it for a failure.
struct Process_End {};

enum class Fault {
  None,
  Failure_Raised,
  Process_Ended,
  Power_Lost,             // all that was not flushed is gone
  Power_Lost_In_Backups,  // what was not flushed is gone there, and on disk elsewhere
  Power_Lost_In_Routes,
};

// Every operation in turn takes minutes; the quick run takes every few of them, others for each
// fault.
const int Stride = std::getenv("RIVELT_FULL_SWEEP") != nullptr ? 1 : 7;
int First_Operation(Fault fault) {
  return Stride == 1 ? 1 : 1 + static_cast<int>(fault);
}

constexpr Fault All_Faults[] = {Fault::Failure_Raised, Fault::Process_Ended, Fault::Power_Lost,
                                Fault::Power_Lost_In_Backups, Fault::Power_Lost_In_Routes};

struct Fault_At : File_Watcher {
  Fault_At(Fault kind, int operation) : Kind(kind), Operation(operation) {}

  void Before_Operation() override {
    ++Count;
    if (Fails && Fails()) throw Failure();
    if (Kind == Fault::None || Count != Operation) return;
    Was_Hit = true;
    if (Kind == Fault::Failure_Raised) throw Failure();
    throw Process_End();
  }

  std::function<bool()> Fails;
  Fault Kind;
  int Operation;
  int Count = 0;
  bool Was_Hit = false;
};

using Route_State = std::map<Text, Text>;

const Text Backup_Folder = u"\\train\\Quenby\\backup";

const Route_State Before{
    {u"a.tdb", Small_Database(u"300", u"360")},     {u"a.trk", u"Name ( A ) FileName ( a )"},
    {u"TSection.DAT", Text(Small_Local)},           {u"world\\w-1.w", Small_World(u"300", u"360")},
    {u"world\\w-2.w", Small_World(u"301", u"361")}, {u"world\\w-3.w", u"Tr_Worldfile ( )"}};
const Route_State After{
    {u"a.tdb", Small_Database(u"400", u"500")},     {u"a.trk", u"Name ( A ) FileName ( a )"},
    {u"tsection.dat", Text(Moved_Local)},           {u"world\\w-1.w", Small_World(u"400", u"500")},
    {u"world\\w-2.w", Small_World(u"401", u"501")}, {u"world\\w-3.w", u"Tr_Worldfile ( )"}};

Route_State Files_Below(const Installation& train, const Text& folder) {
  Route_State files;
  for (const auto& file : train.Disk.In_Folder(folder, false)) {
    files[Memory_Disk::Name(file.Path)] = file.Content();
  }
  for (const auto& inner : train.Disk.In_Folder(folder, true)) {
    const Text name = Memory_Disk::Name(inner.Path);
    for (const auto& [path, content] : Files_Below(train, inner.Path)) {
      files[name + u"\\" + path] = content;
    }
  }
  return files;
}

Route_State Route_Of(const Installation& train) {
  return Files_Below(train, u"\\train\\routes\\A");
}

Lines Updates_Of_A(const Installation& train) {
  Lines names;
  for (const auto& found : train.Disk.In_Folder(Backup_Folder + u"\\A", true)) {
    names.push_back(Memory_Disk::Name(found.Path));
  }
  return names;
}

bool Is_Unfinished(const Installation& train) {
  return std::ranges::any_of(Updates_Of_A(train),
                             [](const Text& name) { return name.ends_with(u".unfinished"); });
}

// A run of the program from its start to its end or its interruption.
class Session {
 public:
  Session(Installation& train, Fault kind = Fault::None, int operation = 0)
      : Train(train), Injected(kind, operation) {}

  template <class Work>
  Session& Run(const Work& work) {
    try {
      Window.Start(Root, [this] {
        return Watched_Files(std::make_unique<Memory_Files>(Train.Disk), Injected);
      });
      Window.Pick(cmbRoutes, u"A");
      if (!Window.Whole_Route()) Window.Toggle_Whole_Route();
      work(*this);
    } catch (const Process_End&) {
      Lose_Power();
    }
    Train.Disk.Locked_Folders->clear();  // as the end of a process does
    return *this;
  }

  bool Logged(Text_View line) const { return Window.Log().find(line) != Text::npos; }

  Installation& Train;
  Fault_At Injected;
  Fixed_Registry Root{"\\train"};
  Memory_Window Window;

 private:
  void Lose_Power() {
    const auto is_backup = [](Text_View path) { return path.starts_with(u"\\train\\Quenby\\b"); };
    const auto is_route = [](Text_View path) { return path.starts_with(u"\\train\\routes"); };
    if (Injected.Kind == Fault::Power_Lost) Train.Disk.Lose_Power([](Text_View) { return true; });
    if (Injected.Kind == Fault::Power_Lost_In_Backups) Train.Disk.Lose_Power(is_backup);
    if (Injected.Kind == Fault::Power_Lost_In_Routes) Train.Disk.Lose_Power(is_route);
  }
};

void Nothing(Session&) {}

void Check_And_Update_Twice(Session& session) {
  session.Window.Press(cmdCheck);
  session.Window.Press(cmdUpdate);
  session.Window.Press(cmdUpdate);
}

void Restore_First(Session& session) {
  Open_Installation& installation = session.Window.Installed();
  const auto backups = List_Backups(*installation.Files, installation.Root);
  installation.Restore(u"A", backups.at(0).Time);
}

// What a person does to the route between an interruption and what the program does next.
struct Person {
  const char* Name;
  std::function<void(Installation&, const Text& path, int number)> Act;
};

Text Of_Person(int number) {
  return u"by the person " + Number_Text(number);
}

const std::vector<Person> Persons{
    {"nothing", [](Installation&, const Text&, int) {}},
    {"edits in place", [](Installation& train, const Text& path,
                          int number) { train.Disk.Edit_In_Place(path, Of_Person(number)); }},
    {"replaces", [](Installation& train, const Text& path,
                    int number) { train.Disk.Put_File(path, Of_Person(number)); }},
    {"removes", [](Installation& train, const Text& path, int) { train.Disk.Remove(path); }},
    {"renames in letter case",
     [](Installation& train, const Text& path, int) {
       train.Disk.Rename(path, Upper_Text(Memory_Disk::Name(path)));
     }},
    {"puts back a copy",
     [](Installation& train, const Text& path, int) {
       const Text place = path.substr(Text_View(u"\\train\\routes\\A\\").size());
       for (const auto& [original, content] : Before) {
         if (Fold_Case(original) == Fold_Case(place)) train.Disk.Put_File(path, content);
       }
     }},
};

// What the program does next.
enum class Next { Starts, Updates_Again, Checks_Another_Route, Restores };
constexpr Next All_Next[] = {Next::Starts, Next::Updates_Again, Next::Checks_Another_Route,
                             Next::Restores};

class Interruption : public testing::Test {
 protected:
  static Installation Made(bool tells_letter_case_apart = false, bool refuses_links = false) {
    Installation train;
    train.Disk.Tells_Letter_Case_Apart = tells_letter_case_apart;
    train.Disk.Refuses_Links = refuses_links;
    train.Global(Small_Catalogue);
    for (const auto& [path, content] : Before) train.Put(u"routes\\A\\" + path, content);
    Put_Small_Route(train, u"B");
    return train;
  }

  // The number of operations of a session without a fault.
  template <class Work>
  static int Operations(Installation train, const Work& work) {
    return Session(train).Run(work).Injected.Count;
  }

  // Two states of the route that differ in the letter case of names only are one.
  static Route_State Folded(const Route_State& route) {
    Route_State folded;
    for (const auto& [path, content] : route) folded[Fold_Case(path)] = content;
    return folded;
  }

  static bool Is_Before(const Installation& train) { return Route_Of(train) == Before; }
  static bool Is_After(const Installation& train) { return Route_Of(train) == After; }

  // The content of a file is in the route or in a folder that the user can find.
  static bool Has(const Installation& train, const Text& content) {
    const auto is_it = [&](const auto& file) { return file.second == content; };
    return std::ranges::any_of(Route_Of(train), is_it) ||
           std::ranges::any_of(Files_Below(train, Backup_Folder), is_it);
  }

  // Files that no person wrote are on one numbering.
  static bool Is_On_One_Numbering(const Route_State& route) {
    bool has_old = false;
    bool has_new = false;
    const Route_State old_files = Folded(Before);
    const Route_State new_files = Folded(After);
    for (const auto& [path, content] : Folded(route)) {
      const auto old_file = old_files.find(path);
      if (old_file == old_files.end() || old_file->second == new_files.at(path)) continue;
      has_old = has_old || content == old_file->second;
      has_new = has_new || content == new_files.at(path);
    }
    return !(has_old && has_new);
  }

  static bool Has_All_Names(const Installation& train) {
    const Route_State route = Folded(Route_Of(train));
    return std::ranges::all_of(Folded(Before),
                               [&](const auto& file) { return route.contains(file.first); });
  }

  // Interrupts an update, lets the person act and the program go on, and looks at what is left.
  void Play(const Installation& whole, Fault fault, int operation, const Person& person,
            bool acts_on_all, Next next) {
    Installation train = whole;
    Route_State of_person;
    Route_State seen;
    const auto act = [&] {
      int number = 0;
      for (const auto& [path, content] : Route_Of(train)) {
        if (path == u"a.trk" || path == u"world\\w-3.w") continue;
        person.Act(train, u"\\train\\routes\\A\\" + path, ++number);
        if (!acts_on_all) break;
      }
      seen = Route_Of(train);
      for (const auto& [path, content] : seen) {
        if (content.starts_with(u"by the person")) of_person[path] = content;
      }
    };
    Session session(train, fault, operation);
    session.Run([&](Session& running) {
      Check_And_Update_Twice(running);
      if (fault != Fault::Failure_Raised || next == Next::Starts) return;
      act();
      if (next == Next::Updates_Again) running.Window.Press(cmdUpdate);
      if (next == Next::Checks_Another_Route) {
        running.Window.Pick(cmbRoutes, u"B");
        running.Window.Press(cmdCheck);
      }
      if (next == Next::Restores && !Updates_Of_A(train).empty()) Restore_First(running);
    });
    if (fault != Fault::Failure_Raised || next == Next::Starts) act();
    const Route_State before_start = Route_Of(train);
    Session restart(train);
    restart.Run(Nothing);
    const Route_State route = Route_Of(train);
    const bool person_removes = std::string_view(person.Name) == "removes";
    EXPECT_TRUE(person_removes || Has_All_Names(train));
    EXPECT_TRUE(route == seen || Is_On_One_Numbering(route));
    EXPECT_FALSE(Is_Unfinished(train));
    EXPECT_TRUE(route == before_start || restart.Logged(u"Rolled back an unfinished update: A"));
    for (const auto& [path, content] : of_person) {
      EXPECT_TRUE(Has(train, content)) << To_Utf8(path);
      const bool was_set_aside = before_start.contains(path) && before_start.at(path) == content &&
                                 (!route.contains(path) || route.at(path) != content);
      const Text_View line = u"Set aside a file that was changed since the update: ";
      EXPECT_TRUE(!was_set_aside || restart.Logged(line) || session.Logged(line));
    }
    Session(train).Run(Nothing);
    EXPECT_EQ(Route_Of(train), route) << "a second start";
  }
};

TEST_F(Interruption, Any_Operation_Of_Check_And_Update_Leaves_The_Route_Whole_After_A_Restart) {
  for (const bool apart : {false, true}) {
    const Installation whole = Made(apart);
    const int operations = Operations(whole, Check_And_Update_Twice);
    int unfinished = 0;
    for (const Fault fault : All_Faults) {
      for (int operation = 1; operation <= operations; ++operation) {
        SCOPED_TRACE(testing::Message()
                     << "fault " << static_cast<int>(fault) << " at " << operation);
        Installation train = whole;
        Session session(train, fault, operation);
        session.Run(Check_And_Update_Twice);
        ASSERT_TRUE(session.Injected.Was_Hit);
        unfinished += Is_Unfinished(train) ? 1 : 0;
        const Route_State found = Route_Of(train);
        Session restart(train);
        restart.Run(Nothing);
        EXPECT_TRUE(Is_Before(train) || Is_After(train));
        EXPECT_EQ(Updates_Of_A(train).size(), Is_After(train) ? 1u : 0u);
        EXPECT_FALSE(Is_Unfinished(train));
        EXPECT_EQ(restart.Logged(u"Rolled back an unfinished update: A\r\n\r\nSelect"),
                  Route_Of(train) != found);
      }
    }
    EXPECT_GT(unfinished, 50);  // or the sweep has missed what it is for
    RecordProperty("operations", operations);
  }
}

TEST_F(Interruption, Any_Operation_Of_A_Restart_Can_Be_Interrupted_In_Turn) {
  const Installation whole = Made(true);
  const int operations = Operations(whole, Check_And_Update_Twice);
  for (int operation = 1; operation <= operations; operation += Stride) {
    Installation interrupted = whole;
    Session(interrupted, Fault::Process_Ended, operation).Run(Check_And_Update_Twice);
    if (!Is_Unfinished(interrupted)) continue;
    for (const Text_View folder : {u"routes\\A\\world", u"routes\\A", u"Quenby\\tmp"}) {
      interrupted.Disk.Flush(Concatenate({u"\\train\\", folder}));  // as the system does in time
    }
    const int restart_operations = Operations(interrupted, Nothing);
    for (const Fault fault : All_Faults) {
      for (int second = First_Operation(fault); second <= restart_operations; second += Stride) {
        SCOPED_TRACE(testing::Message()
                     << operation << ", then " << static_cast<int>(fault) << " at " << second);
        Installation train = interrupted;
        Session(train, fault, second).Run(Nothing);
        Session(train).Run(Nothing);
        EXPECT_TRUE(Is_Before(train) || Is_After(train));
        EXPECT_FALSE(Is_Unfinished(train));
      }
    }
  }
}

TEST_F(Interruption, What_A_Person_Changes_Before_The_Program_Goes_On_Is_Never_Lost) {
  int played = 0;
  for (const bool apart : {false, true}) {
    const Installation whole = Made(apart, apart);  // and with copies in place of links
    const int operations = Operations(whole, Check_And_Update_Twice);
    for (const Fault fault : All_Faults) {
      for (int operation = First_Operation(fault); operation <= operations; operation += Stride) {
        Installation interrupted = whole;
        Session(interrupted, fault, operation).Run(Check_And_Update_Twice);
        if (!Is_Unfinished(interrupted)) continue;
        for (const Person& person : Persons) {
          for (const Next next : All_Next) {
            if (next != Next::Starts && fault != Fault::Failure_Raised) continue;
            for (const bool acts_on_all : {false, true}) {
              SCOPED_TRACE(testing::Message()
                           << "apart " << apart << ", fault " << static_cast<int>(fault) << " at "
                           << operation << ", the person " << person.Name
                           << (acts_on_all ? " all" : " one") << ", then "
                           << static_cast<int>(next));
              Play(whole, fault, operation, person, acts_on_all, next);
              ++played;
            }
          }
        }
      }
    }
  }
  EXPECT_GT(played, 500);
  RecordProperty("played", played);
}

// Three updates, with a tile added after each and one removed after the first.
class Three_Updates : public Interruption {
 protected:
  Three_Updates() {
    for (int update = 0; update < 3; ++update) {
      const Text number(Trim_Text(Number_Text(1000 * (update + 1))));
      Train.Global(Concatenate({u"TrackSections ( ", number, u" ) TrackShapes ( ", number, u" )"}));
      States.push_back(Route_Of(Train));
      Session(Train).Run([](Session& session) { session.Window.Press(cmdUpdate); });
      if (update == 0) Train.Disk.Remove(u"\\train\\routes\\A\\world\\w-2.w");
      Train.Disk.Time += 60'000'000'000;
      const Text tile = Concatenate({u"routes\\A\\world\\new", number, u".w"});
      Train.Put(tile, Small_World(number, number));
    }
    Memory_Files files(Train.Disk);
    for (const Backup& backup : List_Backups(files, u"\\train")) Times.push_back(backup.Time);
  }

  static void Restore(Session& session, const Text& time, Restore_Result& result) {
    result = session.Window.Installed().Restore(u"A", time);
  }

  Installation Train = Made(true);
  std::vector<Route_State> States;  // just before each update
  Lines Times;
};

TEST_F(Three_Updates, A_Restore_Makes_The_Route_What_It_Was_And_Names_What_It_Cannot) {
  ASSERT_EQ(Times.size(), 3u);
  const Route_State now = Route_Of(Train);
  for (std::size_t to = 0; to < 3; ++to) {
    Installation train = Train;
    Restore_Result result;
    Session(train).Run([&](Session& session) { Restore(session, Times[to], result); });
    EXPECT_EQ(result.How, Restore_Result::End::Done);
    Route_State wanted = States[to];
    for (const auto& [path, content] : now) {
      if (Folded(wanted).contains(Fold_Case(path))) continue;
      // A tile that a later update has moved goes back as far as its originals do.
      const std::size_t added = path.find(u"1000") != Text::npos ? 1 : 2;
      wanted[path] = States[added].contains(path) ? States[added].at(path) : content;
    }
    EXPECT_EQ(Route_Of(train), wanted) << to;
    EXPECT_EQ(result.Files.From_Later.size(), to == 0 ? 2u : to == 1 ? 1u : 0u);
    EXPECT_EQ(result.Files.Newer, Lines{u"world\\new3000.w"});

    // It can itself be restored from.
    Memory_Files files(train.Disk);
    const Text newest = List_Backups(files, u"\\train").back().Time;
    EXPECT_GT(newest, Times.back());
    Session(train).Run([&](Session& session) { Restore(session, newest, result); });
    EXPECT_EQ(Route_Of(train), now) << to;
  }
}

TEST_F(Three_Updates, A_Restore_That_Is_Interrupted_Anywhere_Is_Whole_Or_Nothing) {
  const Route_State now = Route_Of(Train);
  Restore_Result result;
  for (const Text& time : Times) {
    const auto restore = [&](Session& session) { Restore(session, time, result); };
    Installation restored = Train;
    const int operations = Session(restored).Run(restore).Injected.Count;
    for (const Fault fault : All_Faults) {
      for (int operation = First_Operation(fault); operation <= operations; operation += Stride) {
        SCOPED_TRACE(testing::Message()
                     << "fault " << static_cast<int>(fault) << " at " << operation);
        Installation train = Train;
        Session(train, fault, operation).Run(restore);
        Session(train).Run(Nothing);
        const bool is_restored = Route_Of(train) == Route_Of(restored);
        EXPECT_TRUE(is_restored || Route_Of(train) == now);
        EXPECT_EQ(Updates_Of_A(train).size(), is_restored ? 4u : 3u);
        EXPECT_FALSE(Is_Unfinished(train));
        Session(train).Run(restore);
        EXPECT_EQ(Route_Of(train), Route_Of(restored));
      }
    }
  }
}

class Failed_Update : public Interruption {
 protected:
  // An update of A that fails at w-2.w, as if that were open in an editor, and what comes then.
  template <class Work>
  static void Run(Installation& train, const Work& work) {
    Session(train).Run([&](Session& session) {
      session.Window.Press(cmdCheck);
      session.Injected.Fails = [&] { return train.Staged() == Lines{u"w-2.w"}; };
      session.Window.Press(cmdUpdate);
      session.Injected.Fails = nullptr;
      EXPECT_EQ(Boxes(session), 1u);
      EXPECT_EQ(Lines_Of(session.Window.Log()), Lines{u"Updating: A, this will take some time"});
      EXPECT_EQ(train.Staged(), Lines{u"w-2.w"});
      work(session);
    });
  }

  static bool Has_Journal(const Installation& train) {
    const Text folder = Backup_Folder + u"\\A\\" + Updates_Of_A(train).at(0);
    return train.Disk.Content(folder + u"\\journal.txt") != u"(no such file)";
  }

  static std::size_t Boxes(const Session& session) {
    return static_cast<std::size_t>(std::ranges::count(session.Window.Boxes(),
                                                       Text(u"Had problems updating this route!"),
                                                       &Memory_Window::Shown_Box::Message));
  }

  Installation Train = Made(true);
};

TEST_F(Failed_Update, Is_Finished_By_The_Next_One_If_Nobody_Has_Changed_The_Route) {
  Run(Train, [&](Session& session) {
    Train.Put(u"Quenby\\tmp\\w-3.w", u"by hand");
    session.Window.Press(cmdUpdate);
    EXPECT_EQ(Boxes(session), 1u);
  });
  Route_State wanted = After;
  wanted[u"world\\w-3.w"] = u"by hand";
  EXPECT_EQ(Route_Of(Train), wanted);
  ASSERT_EQ(Updates_Of_A(Train).size(), 1u);
  Route_State kept = Files_Below(Train, Backup_Folder + u"\\A\\" + Updates_Of_A(Train)[0]);
  EXPECT_EQ(kept.erase(u"journal.txt"), 1u);
  Route_State originals = Before;
  originals.erase(u"a.trk");
  EXPECT_EQ(kept, originals);
}

TEST_F(Failed_Update, At_The_Database_Is_Finished_By_The_Next_One) {
  Session(Train).Run([&](Session& session) {
    session.Window.Press(cmdCheck);
    session.Injected.Fails = [&] { return Train.Staged().empty(); };
    session.Window.Press(cmdUpdate);
    session.Injected.Fails = nullptr;
    EXPECT_NE(Route_Of(Train), After);
    session.Window.Press(cmdUpdate);
    EXPECT_EQ(Boxes(session), 1u);
  });
  EXPECT_EQ(Route_Of(Train), After);
}

TEST_F(Failed_Update, Is_Refused_When_Somebody_Has_Changed_What_It_Moved_Or_Is_To_Move) {
  for (const Text_View changed : {u"world\\w-1.w", u"tsection.dat", u"world\\w-2.w"}) {
    Installation train = Made(true);
    const Text path = Concatenate({u"routes\\A\\", changed});
    Run(train, [&](Session& session) {
      train.Put(path, u"edited");
      session.Window.Press(cmdUpdate);
      EXPECT_EQ(Boxes(session), 2u);
    });
    EXPECT_EQ(train.Content(path), u"edited");
    EXPECT_EQ(train.Staged(), Lines{u"w-2.w"});
  }
}

TEST_F(Failed_Update, Comes_Where_Somebody_Changes_A_File_Just_Before_It_Would_Be_Deleted) {
  const Text path = u"routes\\A\\world\\w-2.w";
  Session(Train).Run([&](Session& session) {
    session.Window.Press(cmdCheck);
    session.Injected.Fails = [&] {
      if (Train.Staged() == Lines{u"w-2.w"}) Train.Put(path, u"edited");
      return false;
    };
    session.Window.Press(cmdUpdate);
    EXPECT_EQ(Boxes(session), 1u);
  });
  EXPECT_EQ(Train.Content(path), u"edited");
}

TEST_F(Failed_Update, That_Moved_Nothing_Leaves_A_Backup_That_Editing_The_Route_Does_Not_Change) {
  Session(Train).Run([&](Session& session) {
    session.Window.Press(cmdCheck);
    session.Injected.Fails = [&] { return Is_Unfinished(Train) && Has_Journal(Train); };
    session.Window.Press(cmdUpdate);
  });
  ASSERT_TRUE(Is_Unfinished(Train));
  Train.Put(u"routes\\A\\world\\w-1.w", u"edited");
  Session(Train).Run(Nothing);
  ASSERT_EQ(Updates_Of_A(Train).size(), 1u);
  EXPECT_FALSE(Is_Unfinished(Train));
  Train.Disk.Edit_In_Place(u"\\train\\routes\\A\\TSection.DAT", u"edited");
  const Text kept = Backup_Folder + u"\\A\\" + Updates_Of_A(Train)[0];
  EXPECT_EQ(Train.Disk.Content(kept + u"\\TSection.DAT"), Small_Local);
}

TEST_F(Failed_Update, With_Nothing_Staged_Any_More_Stays_Until_A_Full_Check_Rolls_It_Back) {
  Run(Train, [&](Session& session) {
    Train.Disk.Remove(u"\\train\\Quenby\\tmp\\w-2.w");
    Train.Disk.Remove(u"\\train\\Quenby\\tmp\\route\\a.tdb");
    session.Window.Press(cmdUpdate);
    EXPECT_TRUE(session.Logged(u"No update needed"));
    EXPECT_TRUE(Is_Unfinished(Train));
    session.Window.Select(optDynamic_1);
    session.Window.Press(cmdCheck);
    EXPECT_TRUE(session.Logged(u"Rolled back an unfinished update: A"));
  });
  EXPECT_EQ(Route_Of(Train), Before);
  EXPECT_FALSE(Is_Unfinished(Train));
}

TEST_F(Interruption, A_Second_Program_Is_Held_Off_And_Touches_Nothing) {
  Installation train = Made();
  train.Put(u"Quenby\\tmp\\of the first.w", u"")
      .Put(u"Quenby\\backup\\A\\2026-01-01 00.00.00.unfinished\\World\\w-1.w", u"kept");
  *train.Disk.Is_Locked = true;
  Session session(train);
  session.Run([&](Session& running) {
    EXPECT_FALSE(running.Logged(u"nfinished update"));
    running.Window.Press(cmdUpdate);
    EXPECT_EQ(Lines_Of(running.Window.Log())[0], u"Had problems in Do_Check!");
    EXPECT_EQ(running.Window.Installed().Restore(u"A", u"").How, Restore_Result::End::Lock_Held);
  });
  EXPECT_EQ(train.Staged(), Lines{u"of the first.w"});
  EXPECT_TRUE(Is_Unfinished(train));
  EXPECT_EQ(Route_Of(train), Before);
}

TEST_F(Interruption, A_File_That_Changed_After_The_Check_Is_Replaced_Marked_And_Kept) {
  Installation train = Made();
  Session(train).Run([&](Session& session) {
    session.Window.Press(cmdCheck);
    train.Put(u"routes\\A\\world\\w-1.w", u"newer");
    session.Window.Press(cmdUpdate);
    EXPECT_EQ(session.Window.Installed().Changed_Since_Check, Lines{u"world\\w-1.w"});
    const auto backups = List_Backups(*session.Window.Installed().Files, u"\\train");
    ASSERT_EQ(backups.size(), 1u);
    EXPECT_EQ(backups[0].Changed, Lines{u"world\\w-1.w"});
  });
  EXPECT_EQ(Route_Of(train).at(u"world\\w-1.w"), After.at(u"world\\w-1.w"));
  EXPECT_TRUE(Has(train, u"newer"));
}

}  // namespace
}  // namespace rivelt
