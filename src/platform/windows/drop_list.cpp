#include "platform/windows/drop_list.h"

namespace rivelt {
namespace {

constexpr DWORD Pause_In_Typing = 1000;  // milliseconds

}  // namespace

void Drop_List::Attach(HWND control, const Sorted_List& entries) {
  Box = control;
  Entries = &entries;
}

void Drop_List::Fill() {
  if (Box == nullptr || Filled == Entries->Count()) return;
  SendMessageW(Box, WM_SETREDRAW, FALSE, 0);
  SendMessageW(Box, CB_RESETCONTENT, 0, 0);
  Filled = Entries->Count();
  for (std::size_t row = 0; row < Filled; ++row) {
    const std::wstring entry = To_Wide(Entries->Entry(row));
    SendMessageW(Box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry.c_str()));
  }
  if (Picked_Row != CB_ERR) {
    Picked_Row = static_cast<LRESULT>(Entries->Find(Picked_Entry).value_or(0));
    SendMessageW(Box, CB_SETCURSEL, static_cast<WPARAM>(Picked_Row), 0);
  }
  SendMessageW(Box, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(Box, nullptr, TRUE);
}

bool Drop_List::Take_Pick() {
  const LRESULT row = SendMessageW(Box, CB_GETCURSEL, 0, 0);
  if (row == Picked_Row || row == CB_ERR) return false;
  Picked_Row = row;
  Picked_Entry = Entries->Entry(static_cast<std::size_t>(row));
  return true;
}

void Drop_List::Type(wchar_t character, DWORD time) {
  if (time - Last_Typed > Pause_In_Typing) Typed.clear();
  Last_Typed = time;
  const bool again = Typed == std::wstring(1, character);
  if (!again) Typed += character;
  const WPARAM behind =
      again ? static_cast<WPARAM>(SendMessageW(Box, CB_GETCURSEL, 0, 0)) : static_cast<WPARAM>(-1);
  const LRESULT row =
      SendMessageW(Box, CB_FINDSTRING, behind, reinterpret_cast<LPARAM>(Typed.c_str()));
  if (row != CB_ERR) SendMessageW(Box, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
}

void Drop_List::Fit(int height) {
  constexpr WPARAM closed_box = static_cast<WPARAM>(-1);
  LRESULT text_height = SendMessageW(Box, CB_GETITEMHEIGHT, closed_box, 0);
  // What the box adds to the height of its text is known only by looking, and the height that is
  // told at first need not count as the one that is set.
  for (int attempt = 0; attempt < 2; ++attempt) {
    RECT area{};
    GetWindowRect(Box, &area);
    text_height += height - (area.bottom - area.top);
    SendMessageW(Box, CB_SETITEMHEIGHT, closed_box, text_height);
  }
}

}  // namespace rivelt
