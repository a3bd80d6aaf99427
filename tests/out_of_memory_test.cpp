// The program when memory runs out in any part of a session.

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "app/watched_files.h"
#include "backup/backups.h"
#include "installation.h"
#include "text/utf8.h"

namespace {

bool Is_Counting = false;
long Count = 0;
long Failing = 0;  // the number of the allocation that fails
int Part = 0;      // of the session
int Failing_Part = 0;

void Begin_Part() {
  Is_Counting = ++Part == Failing_Part;
}

}  // namespace

void* operator new(std::size_t size) {
  if (Is_Counting && ++Count == Failing) throw std::bad_alloc();
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept try {
  return operator new(size);
} catch (const std::bad_alloc&) {
  return nullptr;
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace rivelt {
namespace {

using enum Control;

// The program has the window from here on; what comes before is for its main.
struct Counting_Window : Memory_Window {
  void Show() override {
    Memory_Window::Show();
    Begin_Part();
  }
};

struct Stop_At : File_Watcher {
  explicit Stop_At(int operation) : Left(operation) {}
  void Before_Operation() override {
    if (--Left == 0) throw Failure();
  }
  int Left;
};

class Out_Of_Memory : public testing::Test {
 protected:
  static Installation Made() {
    Installation train;
    Put_Small_Route(train.Global(Small_Catalogue), u"A");
    return train;
  }

  // An installation in which an update was stopped by a failure after some of its moves.
  static Installation Unfinished() {
    for (int operation = 1;; ++operation) {
      Installation train = Made();
      Memory_Window window;
      Fixed_Registry registry{"\\train"};
      Stop_At stop(operation);
      window.Start(registry,
                   [&] { return Watched_Files(std::make_unique<Memory_Files>(train.Disk), stop); });
      if (window.Pick(cmbRoutes, u"A")) window.Press(cmdUpdate);
      train.Disk.Locked_Folders->clear();
      if (Local(train) == u"(no such file)") return train;
    }
  }

  static Text Local(Installation& train) { return train.Content(u"routes\\A\\tsection.dat"); }

  static bool Is_Whole(Installation& train) {
    const Text world = train.Content(u"routes\\A\\world\\w-1.w");
    return (Local(train) == Small_Local && world == Small_World(u"300", u"360")) ||
           (Local(train) == Moved_Local && world == Small_World(u"400", u"500"));
  }

  void Start(Installation& train, Memory_Window& window) {
    Do([&] {
      window.Start(Registry_Value, [&] { return std::make_unique<Memory_Files>(train.Disk); });
    });
  }

  template <class Step>
  void Do(const Step& step) {
    try {
      step();
    } catch (const std::exception& escaped) {
      Is_Counting = false;
      ADD_FAILURE() << "allocation " << Failing << ": " << escaped.what();
    }
    Is_Counting = false;
  }

  void Press(Memory_Window& window, Control button) {
    Do([&] {
      Begin_Part();
      window.Press(button);
    });
  }

  static void Expect_Message(const Memory_Window& window) {
    bool has_message = !window.Boxes().empty();
    for (const Text_View end :
         {u"check/update\r\n", u"before updating\r\n", u"Finished updating \r\n",
          u"No update needed\r\n", u"MSTS installed!"}) {
      has_message = has_message || window.Log().find(end) != Text::npos;
    }
    EXPECT_TRUE(has_message) << "allocation " << Failing << ": " << To_Utf8(window.Log());
    EXPECT_EQ(window.Shown_Pointer(), Pointer::Default) << "allocation " << Failing;
  }

  // What the user does, and then a start with enough memory. Gives whether an allocation failed.
  template <class Commands>
  bool Play(Installation train, const Commands& commands) {
    Count = 0;
    Part = 0;
    Counting_Window window;
    Start(train, window);
    Expect_Message(window);
    commands(train, window);
    const bool has_failed = Count >= Failing;
    train.Disk.Locked_Folders->clear();
    Memory_Window restart;
    Start(train, restart);
    EXPECT_TRUE(Is_Whole(train)) << "after " << To_Utf8(window.Log());
    return has_failed;
  }

  void All_Commands(Installation& train, Memory_Window& window) {
    window.Pick(cmbRoutes, u"A");
    window.Select(optDynamic_1);
    window.Save_File_Names.push_back(u"\\train\\log.txt");
    for (const Control button : {cmdCheck, cmdUpdate, cmdSave}) {
      Press(window, button);
      Expect_Message(window);
    }
    Restore(train, window);
  }

  void Restore(Installation& train, Memory_Window& window) {
    Memory_Files files(train.Disk);
    const auto backups = List_Backups(files, u"\\train");
    if (backups.empty() || !window.Enabled(cmdSave)) return;
    Do([&] {
      Begin_Part();
      window.Form().Restore(u"A", backups[0].Time);
    });
  }

  Fixed_Registry Registry_Value{"\\train"};
};

// Dense where a part begins, where the handlers of short procedures are.
long After(long allocation) {
  return allocation + 1 + allocation / 50;
}

TEST_F(Out_Of_Memory, Every_Command_Ends_In_A_Message_And_Leaves_The_Route_Whole) {
  const Installation whole = Made();
  const auto commands = [this](auto&... with) { All_Commands(with...); };
  for (Failing_Part = 1; Failing_Part <= 5; ++Failing_Part) {
    Failing = 1;
    while (!HasFailure() && Play(whole, commands)) Failing = After(Failing);
    EXPECT_GT(Failing, 5) << "part " << Failing_Part;
  }
}

TEST_F(Out_Of_Memory, A_Start_After_A_Failed_Update_Leaves_It_For_The_Next_Start) {
  const Installation unfinished = Unfinished();
  Failing_Part = 1;
  Failing = 1;
  while (!HasFailure() && Play(unfinished, [](auto&...) {})) Failing = After(Failing);
  EXPECT_GT(Failing, 1000);
}

}  // namespace
}  // namespace rivelt
