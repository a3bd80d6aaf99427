// What a drop-down list does beyond the system's own.

#pragma once

#include <optional>

#include "platform/windows/win32.h"
#include "window/sorted_list.h"

namespace rivelt {

// Gives the list these entries in the place of those it has. None is picked.
void Fill_List(HWND list, const Sorted_List& entries);

// Makes the closed list as high as its place.
void Fit_List(HWND list, int height);

// What a person types into lists.
class Typed_Start {
 public:
  // The row of the first entry that starts with what was typed up to now without a pause, or of the
  // next one with that start when one character is typed again and again. time is in milliseconds.
  std::optional<WPARAM> Row_After(HWND list, wchar_t character, DWORD time);

 private:
  std::wstring Typed;
  DWORD Last_Time = 0;
  HWND Last_List = nullptr;
};

}  // namespace rivelt
