#include "platform/windows/text_box.h"

#include <commctrl.h>
#include <optional>

#include "window/first_line.h"

namespace rivelt {
namespace {

// The text on the clipboard, if there is one.
std::optional<Text> Clipboard_Text(HWND box) {
  if (!OpenClipboard(box)) return std::nullopt;
  std::optional<Text> text;
  if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    if (const void* units = GlobalLock(data)) {
      text = From_Wide(static_cast<const wchar_t*>(units));
      GlobalUnlock(data);
    }
  }
  CloseClipboard();
  return text;
}

LRESULT CALLBACK Text_Box_Procedure(HWND box, UINT message, WPARAM wparam, LPARAM lparam,
                                    UINT_PTR /*id*/, DWORD_PTR /*data*/) {
  if (message != WM_PASTE) return DefSubclassProc(box, message, wparam, lparam);
  if (const std::optional<Text> text = Clipboard_Text(box)) {
    const std::wstring line = To_Wide(First_Line(*text));
    SendMessageW(box, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(line.c_str()));
  }
  return 0;
}

}  // namespace

void Paste_First_Line_Only(HWND box) {
  SetWindowSubclass(box, Text_Box_Procedure, 0, 0);
}

}  // namespace rivelt
