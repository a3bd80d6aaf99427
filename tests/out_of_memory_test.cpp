// The program when memory runs out in any part of a session: as if any other step had failed.

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <optional>
#include <string>

#include "backup/restore.h"
#include "installation.h"
#include "text/utf8.h"

namespace {

bool Is_Counting = false;
long Count = 0;
long Failing = 0;  // the number of the allocation that fails
int Part = 0;      // of the session
int Failing_Part = 0;
bool Raises_Failure = false;  // in the place of the error for want of memory

void Begin_Part() {
  Is_Counting = ++Part == Failing_Part;
}

}  // namespace

void* operator new(std::size_t size) {
  if (Is_Counting && ++Count == Failing) {
    if (Raises_Failure) throw rivelt::Failure();
    throw std::bad_alloc();
  }
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept try {
  return operator new(size);
} catch (const std::exception&) {
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

class Out_Of_Memory : public testing::Test {
 protected:
  // A part of the session, from which nothing may escape, and what a user sees then.
  template <class Step>
  void Do(const Installation& train, const Memory_Window& window, const Step& step) {
    try {
      step();
    } catch (const std::exception& escaped) {
      ADD_FAILURE() << "allocation " << Failing << ": " << escaped.what();
    }
    Is_Counting = false;
    Look(train, window);
  }

  void Start(Installation& train, Memory_Window& window) {
    Do(train, window,
       [&] { window.Start(Registry_Value, [&] { return Memory_Files(train.Disk); }); });
  }

  void Use_All_Commands(Installation& train, Memory_Window& window) {
    window.Pick(cmbRoutes, u"A");
    window.Select(optDynamic_1);
    window.Save_File_Names.push_back(u"\\train\\log.txt");
    for (const Control button : {cmdCheck, cmdUpdate, cmdSave}) {
      Begin_Part();
      Do(train, window, [&] { window.Press(button); });
    }
    if (train.Content(Local) == u"(no such file)") Unfinished.emplace(train);
    const auto files = Memory_Files(train.Disk);
    for (const Backup& backup : List_Backups(*files, u"\\train")) {
      Begin_Part();
      Do(train, window, [&] { window.Choose(Menu_Entry::Restore, backup.Time); });
    }
  }

  // There must be a message.
  void Look(const Installation& train, const Memory_Window& window) {
    bool has_message = !window.Boxes().empty();
    for (const Text_View end :
         {u"check/update\r\n", u"before updating\r\n", u"Finished updating \r\n",
          u"No update needed\r\n", u"Finished restoring \r\n", u"MSTS installed!"}) {
      has_message = has_message || window.Log().find(end) != Text::npos;
    }
    EXPECT_TRUE(has_message) << "allocation " << Failing << ": " << To_Utf8(window.Log());
    EXPECT_EQ(window.Shown_Pointer(), Pointer::Default) << "allocation " << Failing;
    Seen += window.Log();
    for (const auto& box : window.Boxes()) Seen += box.Message;
    for (const Text_View folder : {u"\\train\\Quenby\\backup\\A", u"\\train\\Quenby\\tmp"}) {
      for (const bool folders : {true, false}) {
        Seen += Number_Text(static_cast<Double>(train.Disk.In_Folder(folder, folders).size()));
      }
    }
  }

  // A session, and a start with enough memory after it. False: it needs fewer allocations.
  bool Play(Installation train, bool only_starts) {
    Count = 0;
    Part = 0;
    Counting_Window window;
    Seen.clear();
    Start(train, window);
    if (!only_starts) Use_All_Commands(train, window);
    const bool has_failed = Count >= Failing;
    train.Disk.Locked_Folders->clear();
    Memory_Window restart;
    Start(train, restart);
    const Text world = train.Content(u"routes\\A\\world\\w-1.w");
    const bool is_moved = train.Content(Local) == Moved_Local;
    EXPECT_EQ(train.Content(Local), is_moved ? Moved_Local : Small_Local);
    EXPECT_EQ(world, is_moved ? Small_World(u"400", u"500") : Small_World(u"300", u"360"));
    return has_failed;
  }

  // Dense where the part begins, where the handlers of short procedures are.
  void Play_All(const Installation& train, int part, bool only_starts) {
    Failing_Part = part;
    Failing = 1;
    while (!HasFailure() && Play(train, only_starts)) {
      const Text without_memory = Seen;
      Raises_Failure = true;
      Play(train, only_starts);
      Raises_Failure = false;
      EXPECT_EQ(without_memory, Seen) << "part " << part << ", allocation " << Failing;
      Failing += 1 + Failing / 20;
    }
    EXPECT_GT(Failing, 5) << "part " << part;
  }

  const Text Local = u"routes\\A\\tsection.dat";
  Text Seen;  // what is on the screen and below Quenby after each part
  // Too long for a string without an allocation; separators in a row are like one.
  Fixed_Registry Registry_Value{"\\train" + std::string(20, '\\')};
  std::optional<Installation> Unfinished;  // with an update that was stopped between its moves
};

TEST_F(Out_Of_Memory, Every_Part_Ends_In_A_Message_And_Leaves_The_Route_To_The_Next_Start) {
  Installation train;
  Put_Small_Route(train.Global(Small_Catalogue), u"A");
  for (int part = 1; part <= 5; ++part) Play_All(train, part, false);
  ASSERT_TRUE(Unfinished);
  Play_All(Installation(*Unfinished), 1, true);
}

}  // namespace
}  // namespace rivelt
