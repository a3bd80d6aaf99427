// What a route is after every failure, every end of the process and every loss of power that can
// come in the middle of an update, and after a person has changed the route before the program goes
// on.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <ranges>
#include <span>
#include <sstream>
#include <string>
#include <utility>

#include "backup/content.h"
#include "backup/restore.h"
#include "installation.h"
#include "text/letter_case.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

using enum Control;

// The end of the process: no handler of the program takes it for a failure.
struct Process_End {};

// Every operation in turn takes minutes; the quick run takes every few of them.
const int Stride = std::getenv("RIVELT_FULL_SWEEP") != nullptr ? 1 : 17;

// Of a loss of power, everywhere or in some folders: what was not flushed is gone there, and is on
// disk elsewhere.
enum class Fault { Failure, Process_Ends, Power_Lost, Power_Lost_In_Backups, Power_Lost_In_Routes };
constexpr Text_View Forgetting[] = {u"\\train", u"\\train\\Quenby\\b", u"\\train\\routes"};

using Route_State = std::map<Text, Text>;

const Text Backup_Folder = u"\\train\\Quenby\\backup\\";
const Text Folder_Of_A = u"\\train\\routes\\A\\";

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
  return Files_Below(train, Folder_Of_A);
}

Lines Updates_Of_A(const Installation& train) {
  Lines names;
  for (const auto& found : train.Disk.In_Folder(Backup_Folder + u"A", true)) {
    names.push_back(Memory_Disk::Name(found.Path));
  }
  return names;
}

Text Files_Of_Newest(const Installation& train) {
  return Backup_Folder + u"A\\" + Updates_Of_A(train).back() + u"\\";
}

bool Is_Unfinished(const Installation& train) {
  return std::ranges::any_of(Updates_Of_A(train),
                             [](const Text& name) { return name.ends_with(u".unfinished"); });
}

class Session;
using Work = std::function<void(Session&)>;
void Nothing(Session&) {}

// A run of the program from its start to its end or its interruption at an operation.
class Session {
 public:
  explicit Session(Installation& train, Fault fault = {}, int operation = 0)
      : Train(train), Injected(fault), Operation(operation) {}

  Session& Run(const Work& work = Nothing) {
    Train.Disk.Before_Operation = [this](bool changes_disk) { Before_Operation(changes_disk); };
    try {
      Window.Start(Root, [this] { return Memory_Files(Train.Disk); });
      Window.Pick(cmbRoutes, u"A");
      if (!Window.Whole_Route()) Window.Toggle_Whole_Route();
      work(*this);
    } catch (const Process_End&) {
      const int place = static_cast<int>(Injected) - static_cast<int>(Fault::Power_Lost);
      if (place >= 0) {
        Train.Disk.Lose_Power(
            [&](Text_View folder) { return folder.starts_with(Forgetting[place]); });
      }
    }
    Train.Disk.Before_Operation = nullptr;
    Train.Disk.Locked_Folders->clear();  // as the end of a process does
    return *this;
  }

  Memory_Disk& Disk() { return Train.Disk; }
  bool Logged(Text_View line) const { return Window.Log().find(line) != Text::npos; }
  std::ptrdiff_t Count_Logged(Text_View start) const {
    return std::ranges::count_if(Lines_Of(Window.Log()),
                                 [&](const Text& line) { return line.starts_with(start); });
  }

  std::function<bool()> Fails;  // asked at each operation
  int Count = 0;                // of operations
  Memory_Window Window;

 private:
  void Before_Operation(bool changes_disk) {
    if (Fails && Fails()) throw Failure();
    // What ends the process makes no difference before an operation that only looks.
    if (Injected != Fault::Failure && !changes_disk) return;
    ++Count;
    if (Count != Operation) return;
    if (Injected == Fault::Failure) throw Failure();
    throw Process_End();
  }

  Installation& Train;
  Fault Injected;
  int Operation;
  Fixed_Registry Root{"\\train"};
};

// Between check and update somebody stages a file that is as in the route.
void Check_And_Update_Twice(Session& session) {
  session.Window.Press(cmdCheck);
  if (!session.Disk().In_Folder(u"\\train\\Quenby\\tmp", false).empty()) {
    session.Disk().Put_File(u"\\train\\Quenby\\tmp\\w-3.w", u"Tr_Worldfile ( )");
  }
  for (const Control button : {cmdUpdate, cmdUpdate}) session.Window.Press(button);
}

// What a person does to the route between an interruption and what the program does next.
struct Person {
  std::string Name;
  std::function<void(Memory_Disk&, const Text& path, const Text& content)> Act;
};

const std::vector<Person> Persons{
    {"does nothing", [](Memory_Disk&, const Text&, const Text&) {}},
    {"edits in place", &Memory_Disk::Edit_In_Place},
    {"replaces", &Memory_Disk::Put_File},
    {"removes", [](Memory_Disk& disk, const Text& path, const Text&) { disk.Remove(path); }},
    {"renames in letter case",
     [](Memory_Disk& disk, const Text& path, const Text&) {
       disk.Rename(path, Upper_Text(Memory_Disk::Name(path)));
     }},
    {"puts back a copy",
     [](Memory_Disk& disk, const Text& path, const Text&) {
       for (const auto& [place, content] : Before) {
         if (Fold_Case(path).ends_with(u"\\a\\" + Fold_Case(place))) disk.Put_File(path, content);
       }
     }},
};

// What the rules make of route, staging folder, journal and kept originals: a twin of the recovery
// that cuts the journal's lines by hand and looks at every file anew.
class Twin {
 public:
  explicit Twin(const Installation& train) : Disk(train.Disk), Route(Route_Of(train)) {
    for (const Text& name : Updates_Of_A(train)) {
      if (name.ends_with(u".unfinished")) Recover(Backup_Folder + u"A\\" + name + u"\\");
    }
  }

  const Route_State& Left() const { return Route; }
  std::ptrdiff_t Set_Aside() const { return Aside; }

 private:
  struct Entry {
    Text Place;
    bool Had = false;
    bool Gets = false;
    bool Is_There = false;
    bool Is_Original = false;
    bool Is_New = false;
    bool Waits = false;

    bool Is_Other() const { return Is_There && !Is_Original && !Is_New; }
    bool Has_Come() const { return Is_Other() && !Waits; }
    bool Is_Done() const { return Is_New || Has_Come(); }
    bool Is_Ours() const { return !Is_Original && !Is_Other(); }  // new or gone
  };

  static std::string Written(const Memory_Disk::Item& file) {
    if (!file.Is_File()) return {};
    Content_Reader reader;
    reader.Add(file.Node->Bytes);
    std::ostringstream written;
    written << std::hex << reader.Whole().Size << '\t' << reader.Whole().Checksum;
    return written.str();
  }

  void Recover(const Text& folder) {
    if (!Disk.Find(folder + u"journal.txt").Node) return;
    Lines lines = Lines_Of(Disk.Content(folder + u"journal.txt"));
    std::vector<Entry> entries;
    for (const Text& line : std::span(lines).subspan(1, lines.size() - 2)) {
      entries.push_back(Look(folder, line));
    }
    const auto any = [&](auto is) { return std::ranges::any_of(entries, is); };
    const bool has_finished = std::ranges::all_of(entries, &Entry::Is_Done) && !any(&Entry::Waits);
    const bool is_mixed =
        any(&Entry::Is_Ours) || (any(&Entry::Has_Come) && any(&Entry::Is_Original));
    if (has_finished || !is_mixed) return;
    for (const Entry& entry : entries) {
      if (entry.Is_Original || (entry.Is_Other() && (entry.Waits || !entry.Had))) continue;
      if (entry.Is_There) Route.erase(In(Folder_Of_A, entry.Place));
      Aside += entry.Is_Other() ? 1 : 0;
      if (entry.Had) Route[In(folder, entry.Place)] = Disk.Content(folder + entry.Place);
    }
  }

  // The place as it is spelled there.
  Text In(const Text& folder, const Text& place) const {
    return Disk.Find(folder + place).Path.substr(folder.size());
  }

  Entry Look(const Text& folder, Text_View line) const {
    std::istringstream written(To_Utf8(line));
    std::array<std::string, 6> fields;
    for (std::string& field : fields) std::getline(written, field, '\t');
    const Text place = From_Utf8(fields[0]);
    const auto found = Disk.Find(Folder_Of_A + place);
    const auto kept = Disk.Find(folder + place);
    const auto has = [&](const auto& file, int size) {
      return Written(file) == fields[size] + "\t" + fields[size + 1];
    };
    Entry entry{place, fields[2] != "-", fields[4] != "-"};
    entry.Is_There = found.Is_File();
    entry.Is_Original =
        entry.Is_There ? has(found, 2) || (entry.Had && found.Node == kept.Node) : !entry.Had;
    entry.Is_New = entry.Is_There ? has(found, 4) : !entry.Gets;
    entry.Waits = entry.Gets && has(Disk.Find(u"\\train\\Quenby\\" + From_Utf8(fields[1])), 4);
    return entry;
  }

  const Memory_Disk& Disk;
  Route_State Route;
  std::ptrdiff_t Aside = 0;
};

constexpr Text_View Aside = u"Set aside a file that was changed since the update: ";

// What the program does next.
enum class Next { Starts, Updates_Again, Checks_Another_Route, Restores };

class Interruption : public testing::Test {
 protected:
  static Installation Made(bool tells_letter_case_apart, bool refuses_links = false) {
    Installation train;
    train.Disk.Time -= 3'600'000'000'000;  // the names of updates are later than all files
    train.Disk.Tells_Letter_Case_Apart = tells_letter_case_apart;
    train.Disk.Refuses_Links = refuses_links;
    train.Global(Small_Catalogue);
    for (const auto& [path, content] : Before) train.Put(u"routes\\A\\" + path, content);
    Put_Small_Route(train, u"B");
    return train;
  }

  // Interrupts the work by each fault at each operation, or at every few of them, others for each
  // fault, and hands over what that leaves.
  template <class Look>
  static void Sweep(const Installation& before, int stride, const Work& work, const Look& look) {
    for (const Fault fault : {Fault::Failure, Fault::Process_Ends, Fault::Power_Lost,
                              Fault::Power_Lost_In_Backups, Fault::Power_Lost_In_Routes}) {
      Installation finished = before;
      const int operations = Session(finished, fault).Run(work).Count;
      RecordProperty("operations", operations);
      const int first = 1 + static_cast<int>(fault) % stride;
      for (int operation = first; operation <= operations; operation += stride) {
        SCOPED_TRACE(testing::Message()
                     << "fault " << static_cast<int>(fault) << " at " << operation);
        Installation train = before;
        EXPECT_GE(Session(train, fault, operation).Run(work).Count, operation);
        look(train, fault, operation);
      }
    }
  }

  // Two states of the route that differ in the letter case of names only are one.
  static Route_State Folded(const Route_State& route) {
    Route_State folded;
    for (const auto& [path, content] : route) folded[Fold_Case(path)] = content;
    return folded;
  }

  // Nothing of an update is left that did not come to its end, and all of one that did.
  static void Expect_Whole_Or_Nothing(const Installation& train) {
    const Route_State route = Route_Of(train);
    EXPECT_TRUE(route == Before || route == After);
    EXPECT_EQ(Files_Below(train, Backup_Folder).empty(), route == Before);
    EXPECT_FALSE(Is_Unfinished(train));
  }

  // Files that no person wrote are on one numbering.
  static bool Is_On_One_Numbering(const Route_State& route) {
    const auto has_any_of = [&](Route_State state, Route_State other) {
      return std::ranges::any_of(Folded(route), [&](const auto& file) {
        return file.second == state[file.first] && file.second != other[file.first];
      });
    };
    return !(has_any_of(Folded(Before), Folded(After)) &&
             has_any_of(Folded(After), Folded(Before)));
  }

  // As the system does in time.
  static void Flush_All(Memory_Disk& disk, const Text& folder) {
    disk.Flush(folder);
    for (const auto& inner : disk.In_Folder(folder, true)) Flush_All(disk, inner.Path);
  }

  // One that is killed or loses power comes to the same after the next.
  static void Kill_The_Start(const Installation& left, int operations, int first,
                             const Route_State& touched, const Route_State& route) {
    if (!Is_Unfinished(left)) return;
    for (int operation = 1 + first % 7; operation <= operations; operation += Stride + 6) {
      const Fault fault = Fault(1 + (first + operation) % 4);
      SCOPED_TRACE(testing::Message()
                   << "start, fault " << static_cast<int>(fault) << " at " << operation);
      Installation again = left;
      Flush_All(again.Disk, u"\\train");
      Session(again, fault, operation).Run();
      Session(again).Run();
      EXPECT_EQ(Route_Of(again), route);
      Expect_Nothing_Lost(again, touched);
    }
  }

  // What the person wrote is in the route or below Quenby.
  static void Expect_Nothing_Lost(const Installation& train, const Route_State& touched) {
    Lines kept;
    for (const Text& folder : {Folder_Of_A, Backup_Folder}) {
      for (const auto& file : Files_Below(train, folder)) kept.push_back(file.second);
    }
    for (const auto& file : touched) {
      if (!file.second.starts_with(u"by the person")) continue;
      EXPECT_NE(std::ranges::count(kept, file.second), 0) << To_Utf8(file.first);
    }
  }

  // Interrupts an update, lets the person act and the program go on, and looks at what is left.
  static void Play(Installation train, Fault fault, int operation, const Person& person,
                   bool acts_on_all, Next next) {
    Route_State touched;  // the route as the person leaves it
    const auto act = [&] {
      Text content = u"by the person ";
      for (const auto& file : Route_Of(train)) {
        if (file.first == u"a.trk" || file.first == u"world\\w-3.w") continue;
        person.Act(train.Disk, Folder_Of_A + file.first, content += u'I');
        if (!acts_on_all) break;
      }
      touched = Route_Of(train);
    };
    Session session(train, fault, operation);
    session.Run([&](Session& running) {
      Check_And_Update_Twice(running);
      if (next == Next::Starts) return;
      act();
      if (next == Next::Updates_Again) running.Window.Press(cmdUpdate);
      if (next == Next::Checks_Another_Route) {
        running.Window.Pick(cmbRoutes, u"B");
        running.Window.Press(cmdCheck);
      }
      if (next == Next::Restores && !Updates_Of_A(train).empty()) {
        running.Window.Form().Restore(u"A", Updates_Of_A(train).front());
      }
    });
    if (next == Next::Starts) act();
    const Installation left = train;
    const Route_State before_start = Route_Of(train);
    const Twin twin(left);
    Session restart(train);
    restart.Run();
    const Route_State route = Route_Of(train);
    EXPECT_EQ(route, twin.Left());
    EXPECT_EQ(restart.Count_Logged(Aside), twin.Set_Aside());
    Kill_The_Start(left, restart.Count, operation, touched, route);
    EXPECT_TRUE(person.Name == "removes" || std::ranges::equal(Folded(route) | std::views::keys,
                                                               Folded(Before) | std::views::keys));
    EXPECT_TRUE(route == touched || Is_On_One_Numbering(route));
    EXPECT_FALSE(Is_Unfinished(train));
    EXPECT_TRUE(route == before_start || restart.Logged(u"Rolled back an unfinished update: A"));
    Expect_Nothing_Lost(train, touched);
    Session(train).Run();
    EXPECT_EQ(Route_Of(train), route) << "a second start";
  }
};

TEST_F(Interruption, Any_Operation_Of_Check_And_Update_Leaves_The_Route_Whole_After_A_Restart) {
  for (const bool apart : {false, true}) {
    int unfinished = 0;
    const auto look = [&](Installation& train, Fault, int) {
      unfinished += Is_Unfinished(train) ? 1 : 0;
      train.Put(u"Quenby\\tmp\\.rivelt-1", u"on its way to another disk");
      if (Is_Unfinished(train)) train.Disk.Put_File(Files_Of_Newest(train) + u".rivelt-2", u"");
      const Route_State found = Route_Of(train);
      Session restart(train);
      restart.Run();
      Expect_Whole_Or_Nothing(train);
      EXPECT_EQ(Updates_Of_A(train).size(), Route_Of(train) == After ? 1u : 0u);
      EXPECT_FALSE(!Updates_Of_A(train).empty() &&
                   train.Disk.Find(Files_Of_Newest(train) + u".rivelt-2").Node);
      EXPECT_EQ(restart.Logged(u"Rolled back an unfinished update: A\r\n\r\nSelect"),
                Route_Of(train) != found);
      EXPECT_TRUE(Route_Of(train) == found ||
                  std::ranges::count(train.Staged(), Text(u".rivelt-1")) == 0);
    };
    Sweep(Made(apart), Stride, Check_And_Update_Twice, look);
    EXPECT_GT(unfinished, 100 / Stride);  // or the sweep has missed what it is for
  }
}

TEST_F(Interruption, Any_Operation_Of_A_Restart_Can_Be_Interrupted_In_Turn) {
  const auto interrupt_restart = [](Installation& train, Fault first, int operation) {
    if (first != Fault::Process_Ends || !Is_Unfinished(train)) return;
    SCOPED_TRACE(operation);
    Flush_All(train.Disk, u"\\train");
    Sweep(train, Stride, Nothing, [](Installation& left, Fault, int) {
      Installation changed = left;
      changed.Disk.Remove(Folder_Of_A + u"world\\w-1.w");
      Session(changed).Run();
      EXPECT_FALSE(Is_Unfinished(changed)) << "though somebody has removed a file";
      Session(left).Run();
      Expect_Whole_Or_Nothing(left);
    });
  };
  Sweep(Made(true), Stride, Check_And_Update_Twice, interrupt_restart);
}

TEST_F(Interruption, What_A_Person_Changes_Before_The_Program_Goes_On_Is_Never_Lost) {
  int played = 0;
  for (const bool apart : {false, true}) {
    const Installation whole = Made(apart, apart);  // and with copies in place of links
    const auto play = [&](Installation& interrupted, Fault fault, int operation) {
      if (!Is_Unfinished(interrupted)) return;
      for (const Person& person : Persons) {
        for (const Next next :
             {Next::Starts, Next::Updates_Again, Next::Checks_Another_Route, Next::Restores}) {
          if (next != Next::Starts && fault != Fault::Failure) continue;
          for (const bool acts_on_all : {false, true}) {
            SCOPED_TRACE(testing::Message() << "apart " << apart << ", the person " << person.Name
                                            << (acts_on_all ? " all, then " : " one, then ")
                                            << static_cast<int>(next));
            Play(whole, fault, operation, person, acts_on_all, next);
            ++played;
          }
        }
      }
    };
    Sweep(whole, Stride, Check_And_Update_Twice, play);
  }
  EXPECT_GT(played, 3000 / Stride);
  RecordProperty("played", played);
}

// Three updates, with a tile added after each and one removed after the first.
class Three_Updates : public Interruption {
 protected:
  Three_Updates() {
    for (const Text_View number : {u"1000", u"2000", u"3000"}) {
      Train.Global(Concatenate({u"TrackSections ( ", number, u" ) TrackShapes ( ", number, u" )"}));
      States.push_back(Route_Of(Train));
      Session(Train).Run([](Session& session) { session.Window.Press(cmdUpdate); });
      if (States.size() == 1) Train.Disk.Remove(Folder_Of_A + u"world\\w-2.w");
      Train.Disk.Time += 60'000'000'000;
      Train.Put(Concatenate({u"routes\\A\\world\\NEW", number, u".W"}),
                Small_World(number, number));
    }
    Train.Disk.Time -= 3'600'000'000'000;
    Train.Put(u"routes\\A\\old", u"a database out of an archive");
    Train.Disk.Time += 3'600'000'000'000;
    Train.Disk.Rename(Folder_Of_A + u"old", u"B.TDB");
  }

  auto Restore(const Text& time) {
    return [&](Session& session) { Result = session.Window.Form().Restore(u"A", time); };
  }

  Installation Train = Made(true);
  std::vector<Route_State> States;  // just before each update
  Restore_Result Result;
};

TEST_F(Three_Updates, A_Restore_Makes_The_Route_What_It_Was_And_Names_What_It_Cannot) {
  const Lines times = Updates_Of_A(Train);
  ASSERT_EQ(times.size(), 3u);
  const Route_State now = Route_Of(Train);
  for (std::size_t to = 0; to < 3; ++to) {
    SCOPED_TRACE(to);
    Installation train = Train;
    Session(train).Run(Restore(times[to]));
    EXPECT_EQ(Result.How, Change_End::Done);
    Route_State wanted = States[to];
    for (const auto& [path, content] : now) {
      if (Folded(wanted).contains(Fold_Case(path))) continue;
      // A tile that a later update has moved goes back as far as its originals do.
      const std::size_t added = path.find(u"1000") != Text::npos ? 1 : 2;
      wanted[path] = States[added].contains(path) ? States[added].at(path) : content;
    }
    EXPECT_EQ(Route_Of(train), wanted);
    EXPECT_EQ(Result.Files.From_Later.size(), 2 - to);
    EXPECT_EQ(Result.Files.Newer, (Lines{u"B.TDB", u"world\\NEW3000.W"}));

    // It can itself be restored from.
    const Text newest = Updates_Of_A(train).back();
    EXPECT_GT(newest, times.back());
    Session(train).Run(Restore(newest));
    EXPECT_EQ(Route_Of(train), now);
  }
}

TEST_F(Three_Updates, A_Restore_Names_What_To_Look_At_After_Others_And_Whatever_The_Clock_Said) {
  const Lines times = Updates_Of_A(Train);
  for (const std::size_t to : {2, 1, 0}) Session(Train).Run(Restore(times[to]));
  EXPECT_EQ(Result.Files.From_Later, (Lines{u"world\\NEW1000.W", u"world\\NEW2000.W"}));
  Train.Disk.Rename(Backup_Folder + u"A\\" + times[2], u"2999-01-01 00.00.00");
  Session(Train).Run(Restore(u"2999-01-01 00.00.00"));
  EXPECT_EQ(Result.Files.Newer, (Lines{u"B.TDB", u"world\\NEW3000.W", u"world\\w-2.w"}));
}

TEST_F(Three_Updates, A_Damaged_Backup_Stops_Its_Own_Restore_Alone) {
  const Lines times = Updates_Of_A(Train);
  const Route_State before = Route_Of(Train);
  const Text damaged = Backup_Folder + u"A\\" + times[1] + u"\\";
  Train.Disk.Put_File(damaged + u"world\\w-1.w", u"");
  const auto restore = [&](const Text& time) {
    Session session(Train);
    session.Run(Restore(time));
    return session.Window.Form().Reason();
  };
  EXPECT_EQ(restore(times[1]),
            u"Somebody has changed a kept original: " + damaged + u"World\\w-1.w");
  EXPECT_EQ(Result.How, Change_End::Nothing_Touched);
  Train.Disk.Put_File(damaged + u"journal.txt", u"");
  EXPECT_EQ(restore(times[1]), u"This backup cannot be read: " + times[1]);
  EXPECT_EQ(Route_Of(Train), before);
  EXPECT_EQ(restore(times[0]), u"");
  EXPECT_EQ(Result.Files.Unreadable, Lines{times[1]});
  EXPECT_EQ(Route_Of(Train).at(u"TSection.DAT"), Small_Local);
}

TEST_F(Three_Updates, A_Restore_That_Is_Interrupted_Anywhere_Is_Whole_Or_Nothing) {
  for (const Text& time : Updates_Of_A(Train)) {
    const auto restore = Restore(time);
    Installation restored = Train;
    Session(restored).Run(restore);
    Sweep(Train, Stride, restore, [&](Installation& train, Fault fault, int) {
      const Change_End end = std::exchange(Result.How, Change_End::Nothing_Touched);
      Session(train).Run();
      const bool is_restored = Route_Of(train) != Route_Of(Train);
      const bool is_whole = Result.Files.Unreadable.empty();
      EXPECT_TRUE(!is_restored || !is_whole || Route_Of(train) == Route_Of(restored));
      EXPECT_EQ(Updates_Of_A(train).size(), is_restored ? 4u : 3u);
      EXPECT_TRUE(fault != Fault::Failure || is_restored == (end == Change_End::Done));
      EXPECT_FALSE(Is_Unfinished(train));
      Session(train).Run(restore);
      EXPECT_EQ(Route_Of(train), Route_Of(restored));
    });
  }
}

class Failed_Update : public Interruption {
 protected:
  // A check and an update of A, during which the operations fail, and what comes then.
  void Run(const std::function<bool()>& fails, const Work& work = Nothing) {
    Session(Train).Run([&](Session& session) {
      session.Window.Press(cmdCheck);
      session.Fails = fails;
      session.Window.Press(cmdUpdate);
      session.Fails = nullptr;
      EXPECT_EQ(Boxes(session), 1);
      EXPECT_EQ(Lines_Of(session.Window.Log()), Lines{u"Updating: A, this will take some time"});
      work(session);
    });
  }

  static std::ptrdiff_t Boxes(const Session& session) {
    const Text message = u"Had problems updating this route!";
    return std::ranges::count(session.Window.Boxes(), message, &Memory_Window::Shown_Box::Message);
  }

  Route_State Kept() const {
    EXPECT_EQ(Updates_Of_A(Train).size(), 1u);
    return Files_Below(Train, Backup_Folder + u"A\\" + Updates_Of_A(Train)[0]);
  }

  Installation Train = Made(true);
  // As if the file were open in an editor.
  const std::function<bool()> At_Last_Tile = [this] { return Train.Staged() == Lines{u"w-2.w"}; };
};

TEST_F(Failed_Update, Is_Finished_By_The_Next_One_If_Nobody_Has_Changed_The_Route) {
  Run(At_Last_Tile, [&](Session& session) {
    EXPECT_EQ(Train.Staged(), Lines{u"w-2.w"});
    Train.Put(u"Quenby\\tmp\\w-3.w", u"by hand");
    session.Fails = [&] { return Train.Staged().empty(); };  // at the database
    session.Window.Press(cmdUpdate);
    EXPECT_EQ(Boxes(session), 2);
    session.Fails = nullptr;
    session.Window.Press(cmdCheck);
    EXPECT_TRUE(session.Logged(u" 1 updated databases are in Quenby\\tmp\\route"));
    session.Window.Press(cmdUpdate);
    EXPECT_EQ(Boxes(session), 2);
  });
  Route_State wanted = After;
  wanted[u"world\\w-3.w"] = u"by hand";
  EXPECT_EQ(Route_Of(Train), wanted);
  Route_State kept = Kept();
  EXPECT_EQ(kept.erase(u"journal.txt"), 1u);
  kept[u"a.trk"] = Before.at(u"a.trk");
  EXPECT_EQ(kept, Before);
}

TEST_F(Failed_Update, Is_Refused_When_Somebody_Has_Changed_What_It_Moved_Or_Is_To_Move) {
  Run(At_Last_Tile, [&](Session& session) {
    int boxes = 1;
    for (const Text_View place : {u"world\\w-1.w", u"tsection.dat", u"world\\w-2.w"}) {
      const Text path = Folder_Of_A + Text(place);
      const Text content = Train.Disk.Content(path);
      Train.Disk.Put_File(path, u"edited");
      session.Window.Press(cmdUpdate);
      EXPECT_EQ(Boxes(session), ++boxes) << To_Utf8(place);
      EXPECT_EQ(Train.Disk.Content(path), u"edited");
      Train.Disk.Put_File(path, content);
    }
    EXPECT_EQ(Train.Staged(), Lines{u"w-2.w"});
  });
}

TEST_F(Failed_Update, Comes_Where_Somebody_Changes_A_File_Just_Before_It_Would_Be_Deleted) {
  const Text path = Folder_Of_A + u"world\\w-2.w";
  bool is_edited = false;
  Run([&] {
    if (!is_edited && At_Last_Tile()) Train.Disk.Put_File(path, u"edited");
    is_edited = is_edited || At_Last_Tile();
    return false;
  });
  EXPECT_EQ(Train.Disk.Content(path), u"edited");
}

TEST_F(Failed_Update, Comes_Where_A_Missing_File_Is_Back_Just_Before_Its_Turn) {
  const Text path = Folder_Of_A + u"world\\w-2.w";
  bool is_back = false;
  Run([&] {
    if (!is_back) Train.Disk.Remove(path);
    if (is_back || !Is_Unfinished(Train) || !Kept().contains(u"journal.txt")) return false;
    Train.Disk.Put_File(path, u"by hand");
    is_back = true;
    return false;
  });
  EXPECT_TRUE(is_back);
  EXPECT_EQ(Train.Disk.Content(path), u"by hand");
}

TEST_F(Failed_Update, Is_Rolled_Back_Though_Its_Folder_Cannot_Go_Yet) {
  Run(At_Last_Tile);
  Session restart(Train);
  bool has_failed = false;
  restart.Fails = [&] {
    const bool fails = !has_failed && !Kept().contains(u"journal.txt");
    has_failed = has_failed || fails;
    return fails;
  };
  restart.Run();
  EXPECT_TRUE(has_failed && restart.Logged(u"Rolled back an unfinished update: A"));
  Session(Train).Run();
  EXPECT_TRUE(Updates_Of_A(Train).empty());
}

TEST_F(Failed_Update, That_Moved_Nothing_Keeps_Only_What_The_Route_Lacks_And_Is_Not_Restored) {
  Run([&] { return Is_Unfinished(Train) && Kept().contains(u"journal.txt"); });
  ASSERT_TRUE(Is_Unfinished(Train));
  Train.Put(u"routes\\A\\world\\w-1.w", u"edited");
  Session(Train).Run();
  EXPECT_EQ(Kept(), (Route_State{{u"world\\w-1.w", Small_World(u"300", u"360")}}));
  Session restart(Train);
  restart.Run();
  EXPECT_TRUE(restart.Window.Restorable().empty());
}

TEST_F(Failed_Update, Goes_On_When_The_Missing_File_Is_Back_Or_Its_Copy_Is_Gone) {
  for (const bool comes_back : {true, false}) {
    Installation train = Made(true);
    Session(train).Run([&](Session& session) {
      session.Window.Press(cmdCheck);
      train.Disk.Remove(Folder_Of_A + u"a.tdb");
      session.Window.Press(cmdUpdate);
      EXPECT_TRUE(Is_Unfinished(train));
      if (comes_back) train.Put(u"routes\\A\\a.tdb", Before.at(u"a.tdb"));
      if (!comes_back) train.Disk.Remove(u"\\train\\Quenby\\tmp\\route\\a.tdb");
      session.Window.Press(cmdUpdate);
      EXPECT_TRUE(session.Logged(comes_back ? u"Finished updating " : u"No update needed"));
      EXPECT_EQ(Boxes(session), 1);
    });
    Session(train).Run();
    EXPECT_FALSE(Is_Unfinished(train));
    Route_State wanted = After;
    if (!comes_back) wanted.erase(u"a.tdb");
    EXPECT_EQ(Route_Of(train), wanted);
  }
}

TEST_F(Failed_Update, Keeps_Anew_What_Is_Edited_In_Place_Before_The_Next_One) {
  Run(At_Last_Tile, [&](Session& session) {
    Train.Disk.Edit_In_Place(Folder_Of_A + u"world\\w-2.w", u"edited");
    session.Window.Press(cmdUpdate);
    EXPECT_TRUE(session.Logged(u"Had changed since the check, and is in the backup: world\\w-2.w"));
    EXPECT_EQ(session.Window.Form().Restore(u"A", Updates_Of_A(Train)[0]).How, Change_End::Done);
  });
  Route_State wanted = Before;
  wanted[u"world\\w-2.w"] = u"edited";
  EXPECT_EQ(Route_Of(Train), wanted);
}

TEST_F(Failed_Update, Of_Which_Something_Kept_Is_Damaged_Is_Named_And_Nothing_Is_Touched) {
  Run(At_Last_Tile);
  const Text folder = Backup_Folder + u"A\\" + Updates_Of_A(Train)[0] + u"\\";
  const struct {
    Text_View File;
    std::optional<Text_View> Content;
    Text Reason;
  } cases[] = {
      {u"journal.txt", u"damaged",
       u"The journal is damaged: " + folder.substr(0, folder.size() - 1)},
      {u"world\\w-1.w", u"", u"Somebody has changed a kept original: " + folder + u"World\\w-1.w"},
      {u"TSection.DAT", std::nullopt, u"A kept original is missing: " + folder + u"tsection.dat"},
  };
  for (const auto& [file, content, reason] : cases) {
    Installation train = Train;
    if (content) train.Disk.Put_File(folder + Text(file), *content);
    if (!content) train.Disk.Remove(folder + Text(file));
    const Installation damaged = train;
    Session(train).Run([&](Session& session) {
      EXPECT_TRUE(session.Logged(u"Could not roll back an unfinished update: A")) << To_Utf8(file);
      EXPECT_EQ(session.Window.Form().Reason(), reason);
      session.Window.Press(cmdCheck);
      EXPECT_EQ(session.Window.Form().Reason(), reason);
    });
    EXPECT_EQ(Files_Below(train, u"\\train"), Files_Below(damaged, u"\\train"));
  }
}

TEST_F(Failed_Update, Is_Rolled_Back_By_A_Start_That_Fails_Which_Says_So_In_Its_Reason) {
  Run(At_Last_Tile);
  Train.Disk.Remove(u"\\train\\global\\tsection.dat");
  Session restart(Train);
  restart.Run();
  EXPECT_EQ(Route_Of(Train), Before);
  EXPECT_TRUE(restart.Window.Log().ends_with(Standard_Line));
  EXPECT_TRUE(
      restart.Window.Form().Reason().starts_with(u"Rolled back an unfinished update: A\r\n"));
}

TEST_F(Failed_Update, Makes_The_Next_Check_A_Full_One_Once_It_Is_Rolled_Back) {
  Run(At_Last_Tile, [&](Session& session) {
    EXPECT_EQ(session.Window.Form().Recover_Before_End(u"A"), Change_End::Rolled_Back);
    session.Window.Press(cmdUpdate);
    EXPECT_TRUE(session.Logged(u"Local tsection.dat"));
  });
  EXPECT_EQ(Route_Of(Train), After);
}

TEST_F(Failed_Update, With_Nothing_Staged_Any_More_Stays_Until_A_Full_Check_Rolls_It_Back) {
  Run(At_Last_Tile, [&](Session& session) {
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

}  // namespace
}  // namespace rivelt
