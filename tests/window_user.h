// A person in front of the window: one class for each back end, so that the tests that every back
// end must pass are written once. And what such tests have behind the window.

#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
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
  struct Seen_Menu {
    bool Enabled;      // the entry "Whole route"
    bool Whole_Route;  // its check mark
    Lines Restorable;
    bool operator==(const Seen_Menu&) const = default;
  };

  virtual ~Window_User() {
    std::error_code none;
    std::filesystem::remove(Saved, none);
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
  virtual void Toggle_Whole_Route() = 0;
  virtual void Restore(const Text& time) = 0;  // one of the menu's
  virtual void Close() = 0;                    // by the platform's own means

  // How the person will answer what comes up: the boxes with OK unless told here, the save dialog
  // with a cancel unless told here (an empty path is a cancel). Each is used once.
  virtual void Answer_With_Cancel() { ++Cancels; }
  virtual void Save_As(Text_View path) { Save_Paths.emplace_back(path); }

  // A file of the machine for Save_As; where the back end has none, its path will do.
  Text File_To_Save() {
    EXPECT_TRUE(std::ofstream(Saved));
    return Saved.u16string();
  }

  // What the person sees.
  virtual bool Visible() const = 0;
  virtual bool Takes_Input(Control control) const = 0;  // enabled, and so is the frame around it
  virtual Text Shown_Text(Control control) const = 0;   // or caption; lines end with CR LF
  virtual Lines Entries(Control list) const = 0;
  bool Selected(Control option) { return Seam().Read_Value(option); }
  virtual bool Hourglass() const = 0;
  virtual Seen_Menu Menu() = 0;                       // of the form
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
  Text Path_To_Save_As() {
    if (Save_Paths.empty()) return {};
    const Text path = Save_Paths.front();
    Save_Paths.pop_front();
    return path;
  }

 private:
  int Cancels = 0;
  std::deque<Text> Save_Paths;
  Lines Seen_Boxes;
  const std::filesystem::path Saved = std::filesystem::temp_directory_path() / "rivelt-log.txt";
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
    User->Start(System_Registry, [this] { return std::make_unique<Memory_Files>(Train.Disk); });
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
