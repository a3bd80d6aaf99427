// The messages of the window: what the user does and what the system tells.

#include "platform/windows/control_kinds.h"
#include "platform/windows/windows_window.h"
#include "text/letter_case.h"

namespace rivelt {
namespace {

bool Is_Key(UINT message) {
  return message >= WM_KEYFIRST && message <= WM_KEYLAST;
}
bool Is_Press_Of_Mouse(UINT message) {
  return message > WM_MOUSEMOVE && message <= WM_MOUSELAST;
}

// Keys that belong to the window's frame: Alt+F4, and Alt+Space for its menu.
bool Is_Key_Of_Frame(const MSG& message) {
  switch (message.message) {
    case WM_SYSKEYDOWN:
    case WM_SYSKEYUP:
      return message.wParam == VK_F4 || message.wParam == VK_SPACE || message.wParam == VK_MENU;
    case WM_SYSCHAR:
      return message.wParam == VK_SPACE;
    default:
      return false;
  }
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
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
      }
      break;
    case WM_ACTIVATE:
      // The system keeps the focus of dialogs alone.
      if (LOWORD(wparam) == WA_INACTIVE && IsChild(Form, GetFocus())) Last_Focus = GetFocus();
      break;
    case WM_SETFOCUS:
      SetFocus(IsWindow(Last_Focus) ? Last_Focus : Handle(Focus_At_Start));
      return 0;
    case WM_DPICHANGED:
      Change_Dpi(LOWORD(wparam), *reinterpret_cast<const RECT*>(lparam));
      return 0;
    case WM_INITMENUPOPUP:
      Menu.Opens(reinterpret_cast<HMENU>(wparam));
      break;
    case WM_SYSCOMMAND:
      if (Menu.Take(wparam)) return 0;
      break;
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
    case Control_Type::Option_Button:
      if (code == BN_CLICKED) Raise(control);
      return;
    case Control_Type::Text_Box:
      if (code == EN_CHANGE) Raise(control);
      return;
    case Control_Type::Drop_Down_List: {
      Drop_List& list = *List_Of(control);
      if (code == CBN_DROPDOWN) list.Fill();
      // To pick the entry that is picked already is an event as well.
      const bool is_pick = code == CBN_SELENDOK && !list.Picked().empty();
      // A list that was opened can go back to its former entry when it closes.
      const bool may_differ = code == CBN_SELCHANGE || code == CBN_CLOSEUP;
      if (is_pick || (may_differ && list.Take_Pick())) Raise(control);
      return;
    }
    default:
      return;
  }
}

void Windows_Window::Raise(Control control) {
  const bool is_command = Row_Of(control).Type == Control_Type::Command_Button;
  const bool nested = Gate.Working() || Drops_Input;
  Gate.Raise(control);
  if (Form == nullptr || nested) return;
  if (is_command) {
    Finish_Work();
  } else {
    Log.Show();
  }
}

void Windows_Window::Restore(const Text& time) {
  Gate.Restore(time);
  if (Form != nullptr) Finish_Work();
}

void Windows_Window::Handle_Message(MSG& message) {
  if (Gate.Working() || Drops_Input) return Handle_While_Working(message);
  if (Is_Key(message.message) || Is_Press_Of_Mouse(message.message)) {
    if (Drop_List* list = List_Of(message.hwnd)) list->Fill();
  }
  if (Type_Into_List(message)) return;
  if (Form != nullptr && IsDialogMessageW(Form, &message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
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
    if (!to_log && !to_quit && !Is_Key_Of_Frame(message)) return;
  }
  if (!alt_key) TranslateMessage(&message);
  DispatchMessageW(&message);
}

bool Windows_Window::Type_Into_List(const MSG& message) {
  if (message.message != WM_CHAR || message.wParam < L' ') return false;
  Drop_List* const target = List_Of(message.hwnd);
  if (target == nullptr) return false;
  target->Type(static_cast<wchar_t>(message.wParam), message.time);
  for (const Control_Row& row : Control_Table) {
    if (List_Of(row.Id) == target && target->Take_Pick()) Raise(row.Id);
  }
  return true;
}

}  // namespace rivelt
