// A person in front of the window on Windows: what is done arrives as the messages of mouse and
// keyboard.

#pragma once

#include <set>

#include "platform/windows/windows_window.h"
#include "window/menu.h"
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
  void Choose(Text_View entry, Text_View choice) override {
    Path = {Text(entry)};
    if (!choice.empty()) Path.emplace_back(choice);
    Use_Menu();
  }
  Lines Menu() override {
    Path.clear();
    Use_Menu();
    return Seen_Entries;
  }
  Lines Choices() override {
    Menu();
    if (std::ranges::find(Seen_Entries, Restore) == Seen_Entries.end()) return {};
    Path = {Restore};
    Reads = true;
    Use_Menu();
    Reads = false;
    return Seen_Entries;
  }
  void Set_By_Aid(Control control, Text_View value) override {
    const HWND handle = Screen.Handle(control);
    const std::wstring text = To_Wide(value);
    const auto content = reinterpret_cast<LPARAM>(text.c_str());
    switch (Row_Of(control).Type) {
      case Control_Type::Drop_Down_List: {
        const LRESULT row =
            SendMessageW(handle, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), content);
        SendMessageW(handle, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
        return;
      }
      case Control_Type::Text_Box:
        SendMessageW(handle, EM_SETSEL, 0, -1);
        SendMessageW(handle, EM_REPLACESEL, TRUE, content);
        return;
      default:
        SendMessageW(handle, BM_CLICK, 0, 0);
    }
  }
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
  Windows_Window& Seam() override { return Screen; }

  Text Offered_File;  // by the last dialog

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

  static Text Caption_Of(HMENU menu, UINT entry) {
    wchar_t caption[64] = {};
    GetMenuStringW(menu, entry, caption, 64, MF_BYPOSITION);
    return From_Wide(caption);
  }
  // The entries that are not grey.
  static Lines Entries_Of(HMENU menu) {
    Lines entries;
    for (int entry = 0; entry < GetMenuItemCount(menu); ++entry) {
      const auto place = static_cast<UINT>(entry);
      const UINT state = GetMenuState(menu, place, MF_BYPOSITION);
      const bool is_line = (state & MF_SEPARATOR) != 0 && (state & MF_POPUP) == 0;
      if (is_line || (state & MF_GRAYED) != 0) continue;
      entries.push_back(
          Concatenate({(state & MF_CHECKED) != 0 ? u"x " : u"", Caption_Of(menu, place)}));
    }
    return entries;
  }

  // The system waits in the menu until it is left, so the timer does what the person does there.
  void Use_Menu() {
    SetForegroundWindow(Screen.Handle());
    const HMENU bar = GetMenu(Screen.Handle());
    Click_Entry(bar, 0);
    if (In_The_Middle) return;
    Opening = GetSubMenu(bar, 0);
    for (int attempt = 0; attempt < 2000 && Opening != nullptr; ++attempt) {
      Let_It_Happen();
      Sleep(1);
    }
    if (Opening != nullptr) ADD_FAILURE() << "the menu does not open";
    Let_It_Happen();
  }
  void Go_On_In_Menu() {
    if (Opening == nullptr || !Is_Shown(Opening)) return;
    const HMENU menu = Opening;
    const Lines entries = Entries_Of(menu);
    const auto is_wanted = [&](const Text& entry) { return entry.ends_with(Path[0]); };
    const bool leaves = Path.empty() || std::ranges::none_of(entries, is_wanted);
    if (Path.empty()) Seen_Entries = entries;
    if (leaves) {
      Opening = nullptr;
      EndMenu();
      return;
    }
    UINT place = 0;
    while (Caption_Of(menu, place) != Path[0]) ++place;
    Path.erase(Path.begin());
    Opening = Path.empty() && !Reads ? nullptr : GetSubMenu(menu, static_cast<int>(place));
    Click_Entry(menu, place);
  }
  static bool Is_Shown(HMENU menu) {
    constexpr UINT get_menu = 0x01E1;  // MN_GETHMENU
    for (HWND popup = nullptr; (popup = FindWindowExW(nullptr, popup, L"#32768", nullptr));) {
      const auto shown = reinterpret_cast<HMENU>(SendMessageW(popup, get_menu, 0, 0));
      if (IsWindowVisible(popup) && shown == menu) return true;
    }
    return false;
  }
  void Click_Entry(HMENU menu, UINT place) {
    RECT area{};
    GetMenuItemRect(menu == GetMenu(Screen.Handle()) ? Screen.Handle() : nullptr, menu, place,
                    &area);
    // Two clicks at one place would be a double click.
    Clicks_Left = !Clicks_Left;
    const LONG quarter = (area.right - area.left) / 4;
    SetCursorPos(Clicks_Left ? area.left + quarter : area.right - quarter, area.top + 4);
    for (const DWORD button : {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP}) {
      mouse_event(button, 0, 0, 0, 0);
    }
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
    Present_User->Go_On_In_Menu();
  }
  void Answer(HWND dialog) {
    if (!Answered.insert(dialog).second) return;
    HWND name = GetDlgItem(dialog, edt1);
    if (name == nullptr) name = GetDlgItem(dialog, cmb13);
    if (name == nullptr) return Answer_Box(dialog);
    Offered_File = Text_Of(name);
    const Text path = Next_Path();
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
    if (shown == LoadIconW(nullptr, IDI_ASTERISK)) return Style_Information;
    return shown == LoadIconW(nullptr, IDI_QUESTION) ? Style_Question : 0;
  }

  static inline Windows_Window_User* Present_User = nullptr;

  Windows_Window Screen;
  const Text Restore = u"Restore a &backup";
  bool In_The_Middle = false;
  HMENU Opening = nullptr;  // the menu that is to show next
  Lines Path;               // the entries to be clicked in it and after it
  bool Reads = false;       // the last of them is a sub-menu, to be read
  Lines Seen_Entries;
  bool Clicks_Left = false;
  UINT_PTR Timer = 0;
  std::set<HWND> Answered;
};

}  // namespace rivelt
