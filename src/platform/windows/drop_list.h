// A drop-down list whose entries are kept outside of the control.

#pragma once

#include "platform/windows/win32.h"
#include "window/sorted_list.h"

namespace rivelt {

// The control gets the entries when the user turns to it: thousands of entries in lists that nobody
// opens cost nothing.
class Drop_List {
 public:
  // entries must outlive the list; several lists may share them.
  void Attach(HWND control, const Sorted_List& entries);

  HWND Control_Handle() const { return Box; }

  // Gives the control all entries that there are by now. The picked one stays picked.
  void Fill();

  // The user may have picked another entry. False: it is the one that was picked before.
  bool Take_Pick();

  // A typed character: picks the first entry that starts with what was typed up to now without a
  // pause, or the next one with that start when one character is typed again and again. time is in
  // milliseconds.
  void Type(wchar_t character, DWORD time);

  // Empty if nothing is picked.
  const Text& Picked() const { return Picked_Entry; }

  // Makes the closed box as high as its place.
  void Fit(int height);

 private:
  HWND Box = nullptr;
  const Sorted_List* Entries = nullptr;
  std::size_t Filled = 0;  // entries that the control has
  LRESULT Picked_Row = CB_ERR;
  Text Picked_Entry;
  std::wstring Typed;
  DWORD Last_Typed = 0;
};

}  // namespace rivelt
