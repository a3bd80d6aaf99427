// What the program asks of a window system: one window with the controls of the table.
//
// What the program does to a control fires no event: only the user does. A back end hands the
// user's events to an Event_Gate and keeps input away from the controls while the gate says that a
// procedure works. An operation may raise Failure where the system refuses it, except Show, Unload
// and Yield.

#pragma once

#include <optional>

#include "text/text.h"
#include "window/controls.h"

namespace rivelt {

enum class Pointer : int { Default = 0, Hourglass = 11 };

// Style values of a message box, and its answer for OK. Any other answer is a Cancel.
inline constexpr int Style_Critical = 16;     // critical-stop icon, one OK button
inline constexpr int Style_Question = 32;     // question icon
inline constexpr int Style_Information = 64;  // information icon, one OK button
inline constexpr int Style_Ok_Cancel = 1;     // buttons OK and Cancel, OK is the default
inline constexpr int Answer_Ok = 1;

class Window {
 public:
  virtual ~Window() = default;

  // The window is on the screen, in the start state of the table, when the call returns. Called
  // once more, it goes back to that state: lists and log are as empty as they were.
  virtual void Show() = 0;

  // The window goes, and the process ends with it once its event loop has control again.
  virtual void Unload() = 0;

  // Of txtMessages, a txtTrack, cmbRoutes or a cmbTracks: the text, of a list the picked entry, or
  // the empty text if none is picked.
  virtual Text Read_Text(Control control) const = 0;

  // Replaces the whole text of txtMessages.
  virtual void Write_Log(Text_View text) = 0;

  // Adds text to the end of txtMessages, at a cost that depends on the addition alone. The
  // newest line comes into view unless the user has scrolled away from it.
  virtual void Append_Log(Text_View text) = 0;

  // The control takes or stops taking input; its content stays.
  virtual void Enable(Control control, bool enabled) = 0;

  // Of an optDynamic: whether that option is selected.
  virtual bool Read_Value(Control option) const = 0;

  // One more entry in a list, in its place by the list's order. Lists with the same source get the
  // same entries, each of them in all before the next, so that a back end may hold them once: what
  // is added to the first may show in the others from then on.
  virtual void Add_Item(Control list, Text_View entry) = 0;

  virtual void Set_Pointer(Pointer pointer) = 0;

  // Waits for the user's answer. Without a title of its own the box has that of the program.
  virtual int Message_Box(Text_View text, int style, std::optional<Text_View> title) = 0;

  // The dialog dlgSaveAs: shows it and returns when the user has closed it. It opens with the file
  // that was chosen last.
  virtual void Show_Save_Dialog() = 0;

  // The file name that the user chose in it, as a path for File_System_Object; empty after a
  // cancel.
  virtual Text Save_File_Name() const = 0;

  // A dialog in which the user chooses a folder. Its path; empty after a cancel.
  virtual Text Ask_For_Folder() = 0;

  virtual void Beep() = 0;

  // Lets pending events of the window run and returns when none is left. Repaints that nobody could
  // see may be left out.
  virtual void Yield() = 0;
};

}  // namespace rivelt
