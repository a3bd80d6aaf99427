// A person in front of the window: one class for each back end, so that the tests that every back
// end must pass are written once.

#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "app/frm_main.h"
#include "window/window.h"

namespace rivelt {

class Window_User {
 public:
  struct Seen_Box {
    Text Message;
    Text Title;
    int Style;  // as the program asked for it, read from the icon and the buttons
    bool operator==(const Seen_Box&) const = default;
  };

  struct Seen_Menu {
    bool Enabled;      // the entry "Whole route"
    bool Whole_Route;  // its check mark
    std::vector<Text> Restorable;
    bool operator==(const Seen_Menu&) const = default;
  };

  virtual ~Window_User() = default;

  // Starts the program and waits until it is ready for the user. Called once.
  virtual void Start(Registry& registry, Create_File_System_Object create_object) = 0;

  // What the person does, by mouse and keys. A control that takes no input stays as it is. Each
  // call returns when all that follows from it has been done, a command included; only in the
  // middle of a command (see In_The_Middle of the tests) it returns at once.
  virtual void Pick(Control list, Text_View entry) = 0;
  virtual void Type(Control text_box, Text_View text) = 0;   // in the place of the text in it
  virtual void Paste(Control text_box, Text_View text) = 0;  // at the end of the text in it
  virtual void Select(Control option) = 0;
  virtual void Press(Control button) = 0;
  virtual void Toggle_Whole_Route() = 0;
  virtual void Restore(const Text& time) = 0;  // one of the menu's
  virtual void Close() = 0;                    // by the platform's own means

  // How the person will answer what comes up: the boxes with OK unless told here, the save dialog
  // with a cancel unless told here (an empty path is a cancel). Each is used once.
  virtual void Answer_With_Cancel() { ++Cancels; }
  virtual void Save_As(Text_View path) { Save_Paths.emplace_back(path); }

  // A folder for Save_As in the way the machine writes paths; it need not exist on the machine.
  virtual Text Folder_To_Save_In() const = 0;

  // What the person sees.
  virtual bool Visible() const = 0;
  virtual bool Takes_Input(Control control) const = 0;  // enabled, and so is the frame around it
  virtual Text Shown_Text(Control control) const = 0;   // lines of the log end with CR LF
  virtual std::vector<Text> Entries(Control list) const = 0;
  virtual bool Selected(Control option) const = 0;
  virtual Text Caption(Control control) const { return Text(Row_Of(control).Caption); }
  virtual bool Hourglass() const = 0;
  virtual Seen_Menu Menu() = 0;                                       // of the form
  virtual std::vector<Seen_Box> Boxes() const { return Seen_Boxes; }  // all so far

  // The back end itself.
  virtual Window& Seam() = 0;

 protected:
  // What the person does with a box or a save dialog that has come up.
  bool Cancels_Box(const Seen_Box& box) {
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
  std::vector<Seen_Box> Seen_Boxes;
};

struct Window_Back_End {
  std::string Name;  // a word of letters
  std::function<std::unique_ptr<Window_User>()> Make_User;
};

// How a test that is run for each back end names it.
inline void PrintTo(const Window_Back_End& back_end, std::ostream* out) {
  *out << back_end.Name;
}

// The back ends that this test program can run; defined beside the user of each.
std::vector<Window_Back_End> Window_Back_Ends();

}  // namespace rivelt
