#include "platform/windows/log_box.h"

#include <commctrl.h>
#include <algorithm>

namespace rivelt {
namespace {

constexpr WPARAM Select_All_Key = 1;  // Ctrl+A as a character

// Tab, Enter and Esc belong to the window, and getting the focus does not select the text.
LRESULT CALLBACK Log_Procedure(HWND box, UINT message, WPARAM wparam, LPARAM lparam,
                               UINT_PTR /*id*/, DWORD_PTR /*data*/) {
  if (message == WM_CHAR && wparam == Select_All_Key) return SendMessageW(box, EM_SETSEL, 0, -1);
  const LRESULT usual = DefSubclassProc(box, message, wparam, lparam);
  if (message != WM_GETDLGCODE) return usual;
  return usual & ~LRESULT{DLGC_WANTALLKEYS | DLGC_WANTTAB | DLGC_HASSETSEL};
}

// A character 0 would end the control's text.
std::wstring Showable(Text_View text) {
  std::wstring wide = To_Wide(text);
  std::replace(wide.begin(), wide.end(), L'\0', L' ');
  return wide;
}

}  // namespace

void Log_Box::Attach(HWND control) {
  Box = control;
  SetWindowSubclass(Box, Log_Procedure, 0, 0);
  SendMessageW(Box, EM_SETLIMITTEXT, 0, 0);
}

void Log_Box::Replace(Text_View text) {
  Whole = text;
  Shown = 0;
  if (Box != nullptr) SetWindowTextW(Box, L"");
  Show();
}

void Log_Box::Append(Text_View text) {
  Whole += text;
}

void Log_Box::Show() {
  const std::size_t end = Whole.size() - (Whole.ends_with(u'\r') ? 1 : 0);
  if (Box == nullptr || end <= Shown) return;
  Add_To_Control(Showable(Text_View(Whole).substr(Shown, end - Shown)));
  Shown = end;
}

void Log_Box::Font_Changed() {
  const HDC context = GetDC(Box);
  const HGDIOBJ former =
      SelectObject(context, reinterpret_cast<HGDIOBJ>(SendMessageW(Box, WM_GETFONT, 0, 0)));
  TEXTMETRICW metrics{};
  if (GetTextMetricsW(context, &metrics)) Line_Height = std::max(1L, metrics.tmHeight);
  SelectObject(context, former);
  ReleaseDC(Box, context);
}

bool Log_Box::Newest_In_View() const {
  RECT area{};
  SendMessageW(Box, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&area));
  const LRESULT visible = (area.bottom - area.top) / Line_Height;
  return SendMessageW(Box, EM_GETFIRSTVISIBLELINE, 0, 0) + visible >=
         SendMessageW(Box, EM_GETLINECOUNT, 0, 0);
}

void Log_Box::Add_To_Control(const std::wstring& addition) {
  const bool follow = Newest_In_View();
  const LRESULT first_line = SendMessageW(Box, EM_GETFIRSTVISIBLELINE, 0, 0);
  DWORD start = 0;
  DWORD end = 0;
  SendMessageW(Box, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  const LRESULT length = GetWindowTextLengthW(Box);
  SendMessageW(Box, WM_SETREDRAW, FALSE, 0);
  SendMessageW(Box, EM_SETSEL, static_cast<WPARAM>(length), length);
  SendMessageW(Box, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(addition.c_str()));
  if (start != end) SendMessageW(Box, EM_SETSEL, start, static_cast<LPARAM>(end));
  if (follow) {
    SendMessageW(Box, WM_VSCROLL, SB_BOTTOM, 0);
  } else {
    const LRESULT moved = SendMessageW(Box, EM_GETFIRSTVISIBLELINE, 0, 0);
    SendMessageW(Box, EM_LINESCROLL, 0, first_line - moved);
  }
  SendMessageW(Box, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(Box, nullptr, FALSE);
}

}  // namespace rivelt
