#include "platform/windows/drop_list.h"

#include <utility>

namespace rivelt {
namespace {

constexpr DWORD Pause_In_Typing = 1000;  // milliseconds

}  // namespace

void Fill_List(HWND list, const Sorted_List& entries) {
  SendMessageW(list, WM_SETREDRAW, FALSE, 0);
  SendMessageW(list, CB_RESETCONTENT, 0, 0);
  for (std::size_t row = 0; row < entries.Count(); ++row) {
    const std::wstring entry = To_Wide(entries.Entry(row));
    SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry.c_str()));
  }
  SendMessageW(list, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(list, nullptr, TRUE);
}

void Fit_List(HWND list, int height) {
  constexpr WPARAM closed_list = static_cast<WPARAM>(-1);
  LRESULT text_height = SendMessageW(list, CB_GETITEMHEIGHT, closed_list, 0);
  // What the list adds to the height of its text is known only by looking, and the height that is
  // reported at first need not count as the one that is set.
  for (int attempt = 0; attempt < 2; ++attempt) {
    RECT area{};
    GetWindowRect(list, &area);
    text_height += height - (area.bottom - area.top);
    SendMessageW(list, CB_SETITEMHEIGHT, closed_list, text_height);
  }
}

std::optional<WPARAM> Typed_Start::Row_After(HWND list, wchar_t character, DWORD time) {
  const bool pauses = time - std::exchange(Last_Time, time) > Pause_In_Typing;
  const bool turns_to = list != std::exchange(Last_List, list);
  if (pauses || turns_to) Typed.clear();
  const bool again = Typed == std::wstring(1, character);
  if (!again) Typed += character;
  const LRESULT before = again ? SendMessageW(list, CB_GETCURSEL, 0, 0) : -1;
  const LRESULT row = SendMessageW(list, CB_FINDSTRING, static_cast<WPARAM>(before),
                                   reinterpret_cast<LPARAM>(Typed.c_str()));
  if (row == CB_ERR) return std::nullopt;
  return static_cast<WPARAM>(row);
}

}  // namespace rivelt
