// A person in front of the window on Windows: what is done arrives as the messages of mouse and
// keyboard.

#pragma once

#include <set>

#include "platform/windows/windows_window.h"
#include "window/form_menu.h"
#include "window_user.h"

// After the headers above, which they depend on.
#include <commdlg.h>
#include <dlgs.h>

#include <algorithm>
#include <cstring>

namespace rivelt {

class Windows_Window_User : public Window_User {
 public:
  Windows_Window_User() {
    constexpr UINT interval = 5;  // milliseconds
    Present_User = this;
    Timer = SetTimer(nullptr, 0, interval, Look_For_Dialogs);
  }
  ~Windows_Window_User() override {
    KillTimer(nullptr, Timer);
    if (Present_User == this) Present_User = nullptr;
  }

  void Start(Registry& registry, Create_File_System_Object create_object) override {
    In_The_Middle = true;
    Screen.Start(registry, std::move(create_object));
    In_The_Middle = false;
  }
  void Pick(Control list, Text_View entry) override {
    const Lines entries = Entries(list);
    const auto row = std::ranges::find(entries, entry) - entries.begin();
    Press(list);
    Key(list, VK_HOME);
    for (int i = 0; i < row; ++i) Key(list, VK_DOWN);
    Key(list, VK_RETURN);
  }
  void Type(Control text_box, Text_View text) override {
    Press(text_box);
    if (!Takes_Input(text_box)) return;
    SendMessageW(Screen.Handle(text_box), EM_SETSEL, 0, -1);
    for (const char16_t unit : text) Post(text_box, WM_CHAR, unit, 1);
    Let_It_Happen();
  }
  void Paste(Control text_box, Text_View text) override {
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    const HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE, bytes);
    std::memcpy(GlobalLock(data), To_Wide(text).c_str(), bytes);
    GlobalUnlock(data);
    if (!OpenClipboard(Screen.Handle())) GTEST_FAIL() << "no clipboard";
    EmptyClipboard();
    SetClipboardData(CF_UNICODETEXT, data);
    CloseClipboard();
    Key(text_box, VK_END);
    constexpr WPARAM ctrl_v = 0x16;
    Post(text_box, WM_CHAR, ctrl_v, 1);
    Let_It_Happen();
  }
  // The system hands no input to a control that is disabled.
  void Press(Control control) override {
    if (!Takes_Input(control)) return;
    const LPARAM place = MAKELPARAM(8, 8);
    Post(control, WM_LBUTTONDOWN, MK_LBUTTON, place);
    Post(control, WM_LBUTTONUP, 0, place);
    Let_It_Happen();
  }
  void Toggle_Whole_Route() override { Pick_From(Open_Menu(), Whole_Route_Caption); }
  void Restore(const Text& time) override { Pick_From(Backups_Of(Open_Menu()), time); }
  void Close() override {
    PostMessageW(Screen.Handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
    Let_It_Happen();
  }

  bool Visible() const override { return Screen.Handle() != nullptr; }
  bool Takes_Input(Control control) const override {
    return IsWindowEnabled(Screen.Handle(control)) != FALSE;
  }
  Text Shown_Text(Control control) const override { return Text_Of(Screen.Handle(control)); }
  Lines Entries(Control list) const override {
    const HWND box = Screen.Handle(list);
    SendMessageW(box, CB_SHOWDROPDOWN, TRUE, 0);
    Lines entries;
    const auto count = static_cast<WPARAM>(SendMessageW(box, CB_GETCOUNT, 0, 0));
    for (WPARAM row = 0; row < count; ++row) {
      wchar_t entry[256] = {};
      SendMessageW(box, CB_GETLBTEXT, row, reinterpret_cast<LPARAM>(entry));
      entries.push_back(From_Wide(entry));
    }
    SendMessageW(box, CB_SHOWDROPDOWN, FALSE, 0);
    return entries;
  }
  bool Hourglass() const override {
    const HWND form = Screen.Handle();
    SendMessageW(form, WM_SETCURSOR, reinterpret_cast<WPARAM>(form),
                 MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    return GetCursor() == LoadCursorW(nullptr, IDC_WAIT);
  }
  Seen_Menu Menu() override {
    const HMENU menu = Open_Menu();
    const UINT whole_route = State_Of(menu, Whole_Route_Caption);
    const Lines restorable = Captions_Of(Backups_Of(menu));
    EXPECT_EQ((State_Of(menu, Restore_Caption) & MF_GRAYED) != 0, restorable.empty());
    return {(whole_route & MF_GRAYED) == 0, (whole_route & MF_CHECKED) != 0, restorable};
  }
  Windows_Window& Seam() override { return Screen; }

  // A key pressed and released in the control.
  void Key(Control control, WPARAM key) {
    if (!Takes_Input(control)) return;
    Post(control, WM_KEYDOWN, key, 1);
    Post(control, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
    Let_It_Happen();
  }

 private:
  static Text Text_Of(HWND window) {
    std::wstring text(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1,
                      L'\0');
    text.resize(static_cast<std::size_t>(
        SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return From_Wide(text);
  }
  static std::wstring Class_Of(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return name;
  }

  static Lines Captions_Of(HMENU menu) {
    Lines captions;
    for (int entry = 0; entry < GetMenuItemCount(menu); ++entry) {
      wchar_t caption[64] = {};
      GetMenuStringW(menu, static_cast<UINT>(entry), caption, 64, MF_BYPOSITION);
      captions.push_back(From_Wide(caption));
    }
    return captions;
  }
  // Of the entry with that caption.
  static int Place_Of(HMENU menu, Text_View caption) {
    const Lines captions = Captions_Of(menu);
    return static_cast<int>(std::ranges::find(captions, caption) - captions.begin());
  }
  static UINT State_Of(HMENU menu, Text_View caption) {
    return GetMenuState(menu, static_cast<UINT>(Place_Of(menu, caption)), MF_BYPOSITION);
  }
  static HMENU Backups_Of(HMENU menu) { return GetSubMenu(menu, Place_Of(menu, Restore_Caption)); }
  // What the system asks the window before it shows the menu.
  HMENU Open_Menu() const {
    const HMENU menu = GetSystemMenu(Screen.Handle(), FALSE);
    SendMessageW(Screen.Handle(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu),
                 MAKELPARAM(0, TRUE));
    return menu;
  }
  // The system hands on no command of an entry that is grey.
  void Pick_From(HMENU menu, Text_View caption) {
    if ((State_Of(menu, caption) & MF_GRAYED) != 0) return;
    PostMessageW(Screen.Handle(), WM_SYSCOMMAND, GetMenuItemID(menu, Place_Of(menu, caption)), 0);
    Let_It_Happen();
  }

  void Post(Control control, UINT message, WPARAM wparam, LPARAM lparam) const {
    PostMessageW(Screen.Handle(control), message, wparam, lparam);
  }
  void Let_It_Happen() {
    if (In_The_Middle) return;
    In_The_Middle = true;
    Screen.Handle_Pending();
    In_The_Middle = false;
  }

  static void CALLBACK Look_For_Dialogs(HWND, UINT, UINT_PTR, DWORD) {
    const auto look_at = [](HWND window, LPARAM) -> BOOL {
      if (IsWindowVisible(window) && Class_Of(window) == L"#32770") Present_User->Answer(window);
      return TRUE;
    };
    if (Present_User == nullptr) return;
    // The number of a window that has gone can come again.
    std::erase_if(Present_User->Answered, [](HWND window) { return !IsWindow(window); });
    EnumThreadWindows(GetCurrentThreadId(), look_at, 0);
  }
  void Answer(HWND dialog) {
    if (!Answered.insert(dialog).second) return;
    HWND name = GetDlgItem(dialog, edt1);
    if (name == nullptr) name = GetDlgItem(dialog, cmb13);
    if (name == nullptr) return Answer_Box(dialog);
    const Text path = Path_To_Save_As();
    SetWindowTextW(name, To_Wide(path).c_str());
    PostMessageW(dialog, WM_COMMAND, path.empty() ? IDCANCEL : IDOK, 0);
  }
  void Answer_Box(HWND box) {
    Text message;
    const bool asks = GetDlgItem(box, IDOK) && IsWindowVisible(GetDlgItem(box, IDCANCEL));
    int style = asks ? Style_Ok_Cancel : 0;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
      if (Class_Of(child) == L"Button") continue;
      const int icon = Style_Of_Icon(child);
      style += icon;
      if (icon == 0) message += Text_Of(child);
    }
    const bool cancels = Cancels_Box(Box_Text(Text_Of(box), style, message));
    PostMessageW(GetFocus(), WM_KEYDOWN, cancels ? VK_ESCAPE : VK_RETURN, 1);
  }
  static int Style_Of_Icon(HWND icon) {
    const auto shown = reinterpret_cast<HICON>(SendMessageW(icon, STM_GETICON, 0, 0));
    if (shown == LoadIconW(nullptr, IDI_HAND)) return Style_Critical;
    return shown == LoadIconW(nullptr, IDI_QUESTION) ? Style_Question : 0;
  }

  static inline Windows_Window_User* Present_User = nullptr;

  Windows_Window Screen;
  bool In_The_Middle = false;
  UINT_PTR Timer = 0;
  std::set<HWND> Answered;
};

}  // namespace rivelt
