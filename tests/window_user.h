// A person in front of the window: one class for each back end, so that the tests that every back
// end must pass are written once. And what such tests have behind the window.

#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "form/frm_main.h"
#include "installation.h"
#include "window/window.h"

namespace rivelt {

class Window_User {
 public:
  virtual ~Window_User() {
    std::error_code none;
    std::filesystem::remove_all(Scratch, none);
  }

  // Starts the program and waits until it is ready for the user. Called once.
  virtual void Start(Registry& registry, Create_File_System_Object create_object) = 0;

  // What the person does, by mouse and keys. A control that takes no input stays as it is. Each
  // call returns when all that follows from it has been done, a command included; only in the
  // middle of a command (see In_The_Middle of the tests) it returns at once.
  virtual void Pick(Control list, Text_View entry) = 0;
  virtual void Type(Control text_box, Text_View text) = 0;   // in the place of the text in it
  virtual void Paste(Control text_box, Text_View text) = 0;  // at the end of the text in it
  virtual void Press(Control button) = 0;                    // or option
  virtual void Close() = 0;                                  // by the platform's own means

  // Opens the menu and chooses the entry with that caption (of the sub-menu, the choice with that
  // caption), or leaves it by Esc if the entry is grey.
  virtual void Choose(Text_View entry, Text_View choice = {}) = 0;

  // Opens the menu to read it: the entries that are not grey, and the sub-menu's.
  virtual Lines Menu() = 0;
  virtual Lines Choices() = 0;

  // The control is set to that text or entry, or the option selected, by the means of aids for the
  // blind: neither keys nor mouse.
  virtual void Set_By_Aid(Control control, Text_View value) = 0;

  // How the person will answer what comes up: the boxes with OK unless told here, the dialogs for a
  // file or a folder with a cancel unless told here (an empty path is one). Each is used once.
  virtual void Answer_With_Cancel() { ++Cancels; }
  virtual void Save_As(Text_View path) { Paths.emplace_back(path); }
  virtual void Open_Folder(Text_View path) { Paths.emplace_back(path); }

  // A folder and a file of the machine; where the back end has none, their paths will do.
  Text Folder_To_Open() {
    std::filesystem::create_directory(Scratch);
    return Scratch.u16string();
  }
  Text File_To_Save() {
    const std::filesystem::path file = std::filesystem::path(Folder_To_Open()) / "rivelt-log.txt";
    EXPECT_TRUE(std::ofstream(file));
    return file.u16string();
  }

  // What the person sees.
  virtual bool Visible() const = 0;
  virtual bool Takes_Input(Control control) const = 0;  // enabled, and so is the frame around it
  virtual Text Shown_Text(Control control) const = 0;   // or caption; lines end with CR LF
  virtual Lines Entries(Control list) const = 0;
  bool Selected(Control option) { return Seam().Read_Value(option); }
  virtual bool Hourglass() const = 0;
  virtual Lines Boxes() const { return Seen_Boxes; }  // all so far, as Box_Text gives them

  // The back end itself.
  virtual Window& Seam() = 0;

  // The style is the one that the program asked for, read from the icon and the buttons.
  static Text Box_Text(Text_View title, int style, Text_View message) {
    return Concatenate({title, Number_Text(style), u": ", message});
  }

 protected:
  // What the person does with a box or a save dialog that has come up.
  bool Cancels_Box(const Text& box) {
    Seen_Boxes.push_back(box);
    return Cancels > 0 && Cancels-- > 0;
  }
  Text Next_Path() {
    if (Paths.empty()) return {};
    const Text path = Paths.front();
    Paths.pop_front();
    return path;
  }

 private:
  int Cancels = 0;
  std::deque<Text> Paths;
  Lines Seen_Boxes;
  const std::filesystem::path Scratch = std::filesystem::temp_directory_path() /
                                        ("rivelt-window-" + std::to_string(std::random_device()()));
};

// Defined beside the user of the back end that the test program is built with.
std::unique_ptr<Window_User> Make_User();

// The whole form behind the window, on an installation in memory with two routes and a third that
// has no name.
class Window_Fixture : public testing::Test {
 protected:
  Window_Fixture() {
    Train.Global(
        u"_INFO ( Track Build 7a) TrackSections ( 400 ) TrackShapes ( 500 "
        u"TrackShape ( 31 FileName ( b.s ) ) TrackShape ( 77 FileName ( A.s ) ) "
        u"TrackShape ( 78 FileName ( c.s ) ) )");
    for (const Text_View name : {u"Second to none", u"a branch line"}) {
      Train.Route(name).World(u"w-1.w", World(u"31", u"b.s"));
    }
    Train.Put(u"routes\\nameless\\x.trk", u"Name ( \"\" )");
  }

  static Text World(Text_View id, Text_View shape) {
    return Concatenate({u"Tr_Worldfile ( TrackObj ( UiD ( 1 ) SectionIdx ( ", id, u" ) FileName ( ",
                        shape, u" ) ) )"});
  }

  void Start() {
    User->Start(System_Registry, [this] { return Memory_Files(Train.Disk); });
  }

  void Start_And_Pick_First() {
    Start();
    User->Pick(Control::cmbRoutes, u"Second to none");
  }

  // Runs the action once, while the next command (or the start) reads a file.
  void In_The_Middle(std::function<void()> action) { Train.Disk.On_Next_Read = std::move(action); }

  Text Log() { return User->Shown_Text(Control::txtMessages); }

  Installation Train;
  Fixed_Registry System_Registry{"\\train"};
  std::unique_ptr<Window_User> User = Make_User();
};

}  // namespace rivelt
