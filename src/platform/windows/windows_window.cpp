#include "platform/windows/windows_window.h"

#include <utility>

#include "platform/windows/control_kinds.h"
#include "window/one_line.h"

// After the header above, which it depends on.
#include <commctrl.h>
#include <commdlg.h>
#include <shobjidl.h>

namespace rivelt {
namespace {

constexpr wchar_t Class_Name[] = L"Rivelt";
constexpr DWORD Form_Style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
constexpr WORD Icon_Number = 1;  // in the resources of the program

bool Is_List(Control control) {
  return Row_Of(control).Type == Control_Type::Drop_Down_List;
}

struct Release_Object {
  void operator()(IUnknown* object) const { object->Release(); }
};

// What the operation of the system makes. Raises Failure where it refuses.
template <class Object, class Operation>
std::unique_ptr<Object, Release_Object> Made(const Operation& make) {
  Object* object = nullptr;
  Require(SUCCEEDED(make(&object)));
  return std::unique_ptr<Object, Release_Object>(object);
}

HICON Program_Icon(int width_metric, int height_metric) {
  return static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(Icon_Number),
                                       IMAGE_ICON, GetSystemMetrics(width_metric),
                                       GetSystemMetrics(height_metric), LR_SHARED));
}

void Register_Class(WNDPROC procedure) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hIcon = Program_Icon(SM_CXICON, SM_CYICON);
  description.hIconSm = Program_Icon(SM_CXSMICON, SM_CYSMICON);
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  description.lpszClassName = Class_Name;
  RegisterClassExW(&description);  // refused, and not needed, for a second window
}

}  // namespace

Windows_Window::~Windows_Window() {
  Unload();
}

void Windows_Window::Start(Registry& registry, Create_File_System_Object create_object) {
  Gate.Start_Up(registry, std::move(create_object));
  Finish_Work();
}

void Windows_Window::Finish_Work() {
  Publish_Entries();
  Log.Show();
  const bool dropped_before = std::exchange(Drops_Input, true);
  Handle_Pending();
  Drops_Input = dropped_before;
}

void Windows_Window::Run() {
  MSG message{};
  while (Form != nullptr && GetMessageW(&message, nullptr, 0, 0) > 0) Handle_Message(message);
}

void Windows_Window::Handle_Pending() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) Handle_Message(message);
}

void Windows_Window::Show() {
  States = {};
  Entries.Reset();
  Has_New_Entries = true;
  if (Form == nullptr) Create_Window();
  for (const Control_Row& row : Control_Table) Apply_Enabled(row);
  Publish_Entries();
  Log.Replace({});
  ShowWindow(Form, SW_SHOWNORMAL);
  SetFocus(Handle(Focus_At_Start));
  UpdateWindow(Form);
}

void Windows_Window::Create_Window() {
  Register_Class(Window_Procedure);
  Form = CreateWindowExW(WS_EX_CONTROLPARENT, Class_Name, To_Wide(Window_Caption).c_str(),
                         Form_Style, CW_USEDEFAULT, CW_USEDEFAULT, 0, 0, nullptr, nullptr,
                         GetModuleHandleW(nullptr), this);
  Dpi = Dpi_Of(Form);
  for (const Control_Row& row : Control_Table) Create_Control(row);
  Menu.Attach(Form);
  Lay_Out();
}

void Windows_Window::Create_Control(const Control_Row& row) {
  const Control_Kind kind = Kind_Of(row);
  HWND& handle = Handles[Tab(row.Id)];
  // A screen reader takes the label before a control as its name, also one that is not to be seen.
  if (!row.Accessible_Name.empty()) {
    CreateWindowExW(0, L"STATIC", To_Wide(row.Accessible_Name).c_str(), WS_CHILD, 0, 0, 0, 0, Form,
                    nullptr, GetModuleHandleW(nullptr), nullptr);
  }
  handle = CreateWindowExW(kind.Extended_Style, kind.Class, To_Wide(row.Caption).c_str(),
                           kind.Style | WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, Form,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(Command_Id(row.Id))),
                           GetModuleHandleW(nullptr), nullptr);
  if (row.Id == Log_Control) Log.Attach(handle);
  if (Is_List(row.Id) || row.Type == Control_Type::Option_Button) {
    SetWindowSubclass(handle, Control_Procedure, static_cast<UINT_PTR>(row.Id),
                      reinterpret_cast<DWORD_PTR>(this));
  }
}

void Windows_Window::Lay_Out() {
  Size_Form();
  Owned_Font font = Message_Font(Dpi);
  for (const Control_Row& row : Control_Table) {
    const HWND handle = Handle(row.Id);
    const RECT place = Place_Of(row, Dpi);
    const int height = place.bottom - place.top;
    SendMessageW(handle, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
    // The height of a drop-down list is that with its entries shown.
    constexpr int shown_entries = 16;
    SetWindowPos(handle, nullptr, place.left, place.top, place.right - place.left,
                 Is_List(row.Id) ? height * shown_entries : height, SWP_NOZORDER | SWP_NOACTIVATE);
    if (Is_List(row.Id)) Fit_List(handle, height);
  }
  Font = std::move(font);
  Log.Font_Changed();
  InvalidateRect(Form, nullptr, TRUE);
}

// The frame around the client area is not of the same height for every title bar, so the first size
// is put right by what came of it.
void Windows_Window::Size_Form() {
  const SIZE wanted = Client_Size(Dpi);
  SIZE size = wanted;
  for (int attempt = 0; attempt < 2; ++attempt) {
    SetWindowPos(Form, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    RECT client{};
    GetClientRect(Form, &client);
    size.cx += wanted.cx - client.right;
    size.cy += wanted.cy - client.bottom;
  }
}

void Windows_Window::Change_Dpi(UINT dpi, const RECT& suggested) {
  Dpi = dpi;
  SetWindowPos(Form, nullptr, suggested.left, suggested.top, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  Lay_Out();
}

void Windows_Window::Unload() {
  if (Form != nullptr) DestroyWindow(Form);
}

Text Windows_Window::Read_Text(Control control) const {
  if (control == Log_Control) return Log.Content();
  return States.Texts[Tab(control)];
}

void Windows_Window::Add_Item(Control list, Text_View entry) {
  Entries.Add(list, entry);
  Has_New_Entries = true;
  // A procedure adds many; the lists get them when it ends.
  if (!Gate.Working()) Publish_Entries();
}

void Windows_Window::Publish_Entries() {
  if (!std::exchange(Has_New_Entries, false)) return;
  for (const Control_Row& row : Control_Table) {
    if (Is_List(row.Id)) Fill_List(Handle(row.Id), Entries.Of(row.Id));
    Put_Back(row.Id);
  }
}

void Windows_Window::Set_Entry(Control list, const Text& entry) {
  const auto row = entry.empty() ? std::nullopt : Entries.Of(list).Find(entry);
  SendMessageW(Handle(list), CB_SETCURSEL, row ? *row : static_cast<WPARAM>(-1), 0);
}

bool Windows_Window::Shows_Its_State(Control list) const {
  const LRESULT row = SendMessageW(Handle(list), CB_GETCURSEL, 0, 0);
  const Text& entry = States.Texts[Tab(list)];
  return row == CB_ERR ? entry.empty()
                       : Entries.Of(list).Entry(static_cast<std::size_t>(row)) == entry;
}

void Windows_Window::Take_Over(Control control) {
  Text& text = States.Texts[Tab(control)];
  const HWND handle = Handle(control);
  switch (Row_Of(control).Type) {
    case Control_Type::Drop_Down_List: {
      const LRESULT row = SendMessageW(handle, CB_GETCURSEL, 0, 0);
      text = row == CB_ERR ? Text() : Entries.Of(control).Entry(static_cast<std::size_t>(row));
      return;
    }
    case Control_Type::Text_Box: {
      std::wstring shown(static_cast<std::size_t>(GetWindowTextLengthW(handle)) + 1, L'\0');
      shown.resize(static_cast<std::size_t>(
          GetWindowTextW(handle, shown.data(), static_cast<int>(shown.size()))));
      text = From_Wide(shown);
      DWORD end = 0;
      SendMessageW(handle, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end));
      std::size_t caret = end;
      if (Cut_To_One_Line(text, caret)) Put_Line(control, text, caret);
      return;
    }
    default:
      States.Selected_Option = control;
  }
}

void Windows_Window::Put_Back(Control control) {
  const bool nested = std::exchange(Is_Own_Change, true);
  const Text& text = States.Texts[Tab(control)];
  switch (Row_Of(control).Type) {
    case Control_Type::Drop_Down_List:
      Set_Entry(control, text);
      break;
    case Control_Type::Text_Box:
      Put_Line(control, text, text.size());
      break;
    case Control_Type::Option_Button:
      for (const Control option : {optDynamic(0), optDynamic(1)}) {
        SendMessageW(Handle(option), BM_SETCHECK, Read_Value(option) ? BST_CHECKED : BST_UNCHECKED,
                     0);
      }
      break;
    default:
      break;
  }
  Is_Own_Change = nested;
}

void Windows_Window::Put_Line(Control text_box, const Text& line, std::size_t caret) {
  const bool nested = std::exchange(Is_Own_Change, true);
  SetWindowTextW(Handle(text_box), To_Wide(line).c_str());
  SendMessageW(Handle(text_box), EM_SETSEL, caret, static_cast<LPARAM>(caret));
  Is_Own_Change = nested;
}

void Windows_Window::Append_Log(Text_View text) {
  Log.Append(text);
  if (!Gate.Working()) Log.Show();
}

void Windows_Window::Enable(Control control, bool enabled) {
  States.Enabled[Tab(control)] = enabled;
  for (const Control_Row& row : Control_Table) {
    if (row.Id == control || row.Parent == control) Apply_Enabled(row);
  }
}

// The frame and its content are siblings for the system: it does not know that one holds the other.
void Windows_Window::Apply_Enabled(const Control_Row& row) {
  const HWND handle = Handle(row.Id);
  const bool enabled = States.Takes_Input(row.Id);
  if (!enabled && GetFocus() == handle) SetFocus(Handle(Quit_Control));
  EnableWindow(handle, enabled);
}

void Windows_Window::Set_Pointer(Pointer pointer) {
  Current_Pointer = pointer;
  POINT position{};
  GetCursorPos(&position);
  const HWND below = WindowFromPoint(position);
  if (below != Form && !IsChild(Form, below)) return;
  SetCursor(LoadCursorW(nullptr, pointer == Pointer::Hourglass ? IDC_WAIT : IDC_ARROW));
}

int Windows_Window::Message_Box(Text_View text, int style, std::optional<Text_View> title) {
  Finish_Work();
  // The style values are those of the system.
  return MessageBoxW(Form, To_Wide(text).c_str(), To_Wide(title.value_or(Window_Caption)).c_str(),
                     static_cast<UINT>(style));
}

void Windows_Window::Show_Save_Dialog() {
  Finish_Work();
  constexpr DWORD longest_path = 32768;
  std::wstring path = To_Wide(Last_Saved);
  path.resize(longest_path);
  OPENFILENAMEW dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = Form;
  dialog.lpstrFile = path.data();
  dialog.nMaxFile = longest_path;
  // The installation can lie at a path that starts at the working directory.
  dialog.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST;
  const bool is_chosen = GetSaveFileNameW(&dialog) != FALSE;
  if (!is_chosen && CommDlgExtendedError() != 0) throw Failure();
  Chosen_File_Name = is_chosen ? From_Wide(path.data()) : Text();
  if (is_chosen) Last_Saved = Chosen_File_Name;
}

Text Windows_Window::Ask_For_Folder() {
  Finish_Work();
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const auto dialog = Made<IFileDialog>([](IFileDialog** made) {
    return CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_IFileDialog,
                            reinterpret_cast<void**>(made));
  });
  dialog->SetOptions(FOS_PICKFOLDERS | FOS_FORCEFILESYSTEM | FOS_NOCHANGEDIR);
  if (FAILED(dialog->Show(Form))) return {};
  const auto chosen = Made<IShellItem>([&](IShellItem** item) { return dialog->GetResult(item); });
  wchar_t* path = nullptr;
  Require(SUCCEEDED(chosen->GetDisplayName(SIGDN_FILESYSPATH, &path)));
  const std::unique_ptr<wchar_t, decltype(&CoTaskMemFree)> owned(path, CoTaskMemFree);
  return From_Wide(path);
}

void Windows_Window::Yield() {
  Pace.Run([this] {
    Log.Show();
    Handle_Pending();
  });
}

}  // namespace rivelt
