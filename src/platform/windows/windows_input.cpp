// The messages of the window: what the user does and what the system tells.

#include "platform/windows/control_kinds.h"
#include "platform/windows/windows_window.h"
#include "text/letter_case.h"

// After the headers above, which it depends on.
#include <commctrl.h>

namespace rivelt {
namespace {

bool Is_Key(UINT message) {
  return message >= WM_KEYFIRST && message <= WM_KEYLAST;
}
bool Is_Press_Of_Mouse(UINT message) {
  return message > WM_MOUSEMOVE && message <= WM_MOUSELAST;
}

// The character of the Alt key of Quit.
bool Is_Quit_Letter(WPARAM character) {
  const Text_View caption = Row_Of(Quit_Control).Caption;
  return Fold_Case(Text(1, static_cast<char16_t>(character))) ==
         Fold_Case(caption.substr(caption.find(u'&') + 1, 1));
}

bool Asks_To_Quit(const MSG& message, HWND quit) {
  switch (message.message) {
    case WM_KEYDOWN:
      return message.wParam == VK_ESCAPE ||
             (message.hwnd == quit && (message.wParam == VK_RETURN || message.wParam == VK_SPACE));
    case WM_SYSCHAR:
      return Is_Quit_Letter(message.wParam);
    default:
      return false;
  }
}

// Enter and Tab would do nothing good in a text that cannot be typed into.
bool Is_Key_To_Read_By(const MSG& message) {
  if (message.message != WM_KEYDOWN) return message.message == WM_KEYUP;
  return message.wParam != VK_RETURN && message.wParam != VK_TAB;
}

}  // namespace

LRESULT CALLBACK Windows_Window::Window_Procedure(HWND window, UINT message, WPARAM wparam,
                                                  LPARAM lparam) {
  if (message == WM_NCCREATE) {
    const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lparam);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    static_cast<Windows_Window*>(creation->lpCreateParams)->Form = window;
  }
  auto* self = reinterpret_cast<Windows_Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self == nullptr) return DefWindowProcW(window, message, wparam, lparam);
  return self->Take_Message(message, wparam, lparam);
}

LRESULT Windows_Window::Take_Message(UINT message, WPARAM wparam, LPARAM lparam) {
  const HWND window = Form;
  switch (message) {
    case WM_COMMAND:
      if (Menu.Take(LOWORD(wparam),
                    [this](Menu_Entry entry, const Text& backup) { Choose(entry, backup); })) {
        return 0;
      }
      if (const auto control = Control_Of(LOWORD(wparam))) {
        Take_Notification(*control, HIWORD(wparam));
      }
      return 0;
    case WM_SETCURSOR:
      if (Current_Pointer == Pointer::Hourglass && LOWORD(lparam) == HTCLIENT) {
        SetCursor(LoadCursorW(nullptr, IDC_WAIT));
        return TRUE;
      }
      break;
    case WM_CTLCOLORSTATIC:
      // A text box that cannot be typed into would be grey: the log is there to be read.
      if (reinterpret_cast<HWND>(lparam) == Handle(Log_Control)) {
        SetBkColor(reinterpret_cast<HDC>(wparam), GetSysColor(COLOR_WINDOW));
        SetTextColor(reinterpret_cast<HDC>(wparam), GetSysColor(COLOR_WINDOWTEXT));
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
      }
      break;
    case WM_SETFOCUS:  // the system gives dialogs alone their former focus back
      SetFocus(IsWindow(Last_Focus) ? Last_Focus : Handle(Focus_At_Start));
      return 0;
    case WM_DPICHANGED:
      Change_Dpi(LOWORD(wparam), *reinterpret_cast<const RECT*>(lparam));
      return 0;
    case WM_INITMENUPOPUP:
      Menu.Opens(reinterpret_cast<HMENU>(wparam));
      break;
    case WM_SYSCOMMAND: {
      // No menu opens while a procedure works: the work would wait for it.
      const WPARAM command = wparam & 0xFFF0;
      const bool opens_menu = command == SC_KEYMENU || command == SC_MOUSEMENU;
      if (opens_menu && (Gate.Working() || Drops_Input)) return 0;
      break;
    }
    case WM_CLOSE:
      Gate.Close();
      return 0;
    case WM_NCDESTROY:
      Form = nullptr;
      Handles = {};
      SetWindowLongPtrW(window, GWLP_USERDATA, 0);
      break;
    default:
      break;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

void Windows_Window::Take_Notification(Control control, UINT code) {
  switch (Row_Of(control).Type) {
    case Control_Type::Command_Button:
      if (code == BN_CLICKED) Press(control);
      return;
    case Control_Type::Option_Button:
      if (code == BN_CLICKED && !Read_Value(control)) Changed(control);
      return;
    case Control_Type::Text_Box:
      if (code == EN_CHANGE) Changed(control);
      return;
    case Control_Type::Drop_Down_List:
      if (code == CBN_DROPDOWN) Before_Opening = States.Texts[Tab(control)];
      // It comes also where the focus leaves a closed list.
      if (code == CBN_SELENDCANCEL && Before_Opening) Set_Entry(control, *Before_Opening);
      if (code == CBN_CLOSEUP || code == CBN_SELENDOK) Before_Opening.reset();
      // To pick the entry that is picked already is an event as well.
      if ((code == CBN_SELENDOK && !States.Texts[Tab(control)].empty()) ||
          !Shows_Its_State(control)) {
        Changed(control);
      }
      return;
    default:
      return;
  }
}

LRESULT CALLBACK Windows_Window::Control_Procedure(HWND control, UINT message, WPARAM wparam,
                                                   LPARAM lparam, UINT_PTR id, DWORD_PTR window) {
  const LRESULT result = DefSubclassProc(control, message, wparam, lparam);
  auto* const self = reinterpret_cast<Windows_Window*>(window);
  const auto changed = static_cast<Control>(id);
  const bool is_option = message == BM_SETCHECK && wparam == BST_CHECKED;
  const bool is_list = message == CB_SETCURSEL || message == CB_SELECTSTRING;
  if ((is_option && !self->Read_Value(changed)) || (is_list && !self->Shows_Its_State(changed))) {
    self->Changed(changed);
  }
  return result;
}

void Windows_Window::Changed(Control control) {
  if (Is_Own_Change) return;
  if (Gate.Working() || Drops_Input) return Put_Back(control);
  Take_Over(control);
  Gate.Raise(control);
}

void Windows_Window::Press(Control button) {
  const bool starts_command = !Gate.Working() && !Drops_Input;
  Gate.Raise(button);
  if (Form != nullptr && starts_command) Finish_Work();
}

void Windows_Window::Choose(Menu_Entry entry, const Text& backup) {
  if (Gate.Working() || Drops_Input) return;
  Gate.Choose(entry, backup);
  if (Form != nullptr) Finish_Work();
}

void Windows_Window::Handle_Message(MSG& message) {
  if (Gate.Working() || Drops_Input) return Handle_While_Working(message);
  if (Presses_By_Enter(message) || Type_Into_List(message)) return;
  if (Form == nullptr || !IsDialogMessageW(Form, &message)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  if (Form != nullptr && IsChild(Form, GetFocus())) Last_Focus = GetFocus();
}

// The system lets Enter press a button only if the keyboard has brought the focus to it.
bool Windows_Window::Presses_By_Enter(const MSG& message) {
  if (message.message != WM_KEYDOWN || message.wParam != VK_RETURN) return false;
  const auto control = Control_Of(GetDlgCtrlID(message.hwnd));
  if (!control || Row_Of(*control).Type != Control_Type::Command_Button) return false;
  Press(*control);
  return true;
}

void Windows_Window::Handle_While_Working(MSG& message) {
  if (Asks_To_Quit(message, Handle(Quit_Control))) {
    Gate.Close();
    return;
  }
  // An Alt key becomes a character, even if it is dropped itself, and is looked at then.
  const bool alt_key = message.message == WM_SYSKEYDOWN;
  if (alt_key) TranslateMessage(&message);
  const bool key = Is_Key(message.message);
  if (key || Is_Press_Of_Mouse(message.message)) {
    const bool to_log = message.hwnd == Handle(Log_Control) &&
                        (!key || Is_Key_To_Read_By(message) || message.message == WM_CHAR);
    const bool to_quit = message.hwnd == Handle(Quit_Control) && !key;
    const bool to_close = alt_key && message.wParam == VK_F4;
    if (!to_log && !to_quit && !to_close) return;
  }
  if (!alt_key) TranslateMessage(&message);
  DispatchMessageW(&message);
}

bool Windows_Window::Type_Into_List(const MSG& message) {
  if (message.message != WM_CHAR || message.wParam < L' ') return false;
  const auto list = Control_Of(GetDlgCtrlID(message.hwnd));
  if (!list || Row_Of(*list).Type != Control_Type::Drop_Down_List) return false;
  const auto row =
      Typed.Row_After(message.hwnd, static_cast<wchar_t>(message.wParam), message.time);
  if (row) SendMessageW(message.hwnd, CB_SETCURSEL, *row, 0);
  return true;
}

}  // namespace rivelt
