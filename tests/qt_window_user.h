// The person in front of the window on a screen of Qt, with mouse and keys.

#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <deque>
#include <vector>

#include "platform/qt/qt_window.h"
#include "window_user.h"

class QFileDialog;
class QMessageBox;

namespace rivelt {

class Qt_Window_User : public Window_User {
 public:
  Qt_Window_User();

  void Start(Registry& registry, Create_File_System_Object create_object) override;
  void Pick(Control list, Text_View entry) override;
  void Type(Control text_box, Text_View text) override;
  void Select(Control option) override;
  void Press(Control button) override;
  void Close() override { Screen.Form_Widget().close(); }

  void Answer_With_Cancel() override { ++Cancels; }
  void Save_As(Text_View path) override { Save_Paths.emplace_back(path); }
  Text Folder_To_Save_In() const override { return u"/no-such-folder"; }

  bool Visible() const override;
  bool Takes_Input(Control control) const override;
  Text Shown_Text(Control control) const override;
  std::vector<Text> Entries(Control list) const override;
  bool Selected(Control option) const override;
  bool Hourglass() const override;
  std::vector<Seen_Box> Boxes() const override { return Seen_Boxes; }
  Window& Seam() override { return Screen; }

  // Gives the window the keyboard back after a list or a dialog: the screen of the tests has no
  // window manager that does.
  void Activate();

  Qt_Window Screen;
  int Save_Dialogs = 0;  // that have come up

 private:
  void Answer_Dialog();
  void Answer(QMessageBox& box);
  void Answer(QFileDialog& dialog);

  QTimer Look_For_Dialogs;
  int Cancels = 0;
  std::deque<Text> Save_Paths;
  std::vector<Seen_Box> Seen_Boxes;
};

}  // namespace rivelt
