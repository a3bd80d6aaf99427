#include "platform/windows/windows_window.h"

#include <utility>
#include <vector>

#include "platform/windows/control_kinds.h"
#include "platform/windows/text_box.h"

// After the header above, which it depends on.
#include <commdlg.h>

namespace rivelt {
namespace {

constexpr wchar_t Class_Name[] = L"Rivelt";
constexpr DWORD Form_Style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
constexpr WORD Icon_Number = 1;  // in the resources of the program

bool Is_List(Control control) {
  return Row_Of(control).Type == Control_Type::Drop_Down_List;
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
  Create_Window();
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
  handle = CreateWindowExW(kind.Extended_Style, kind.Class, To_Wide(row.Caption).c_str(),
                           kind.Style | WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, Form,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(Command_Id(row.Id))),
                           GetModuleHandleW(nullptr), nullptr);
  Apply_Enabled(row);
  if (row.Id == Selected_At_Start) SendMessageW(handle, BM_SETCHECK, BST_CHECKED, 0);
  if (row.Id == Log_Control) Log.Attach(handle);
  if (row.Type == Control_Type::Text_Box) Paste_First_Line_Only(handle);
  if (Drop_List* list = List_Of(row.Id)) list->Attach(handle, Entries.Of(row.Id));
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
    if (Drop_List* list = List_Of(row.Id)) list->Fit(height);
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
  if (Is_List(control)) return Lists[Tab(control)].Picked();
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(Handle(control))) + 1, L'\0');
  text.resize(static_cast<std::size_t>(
      GetWindowTextW(Handle(control), text.data(), static_cast<int>(text.size()))));
  return From_Wide(text);
}

void Windows_Window::Append_Log(Text_View text) {
  Log.Append(text);
  if (!Gate.Working()) Log.Show();
}

void Windows_Window::Enable(Control control, bool enabled) {
  Enabled_States[Tab(control)] = enabled;
  for (const Control_Row& row : Control_Table) {
    if (row.Id == control || row.Parent == control) Apply_Enabled(row);
  }
}

// The frame and its content are siblings for the system: it does not know that one holds the other.
void Windows_Window::Apply_Enabled(const Control_Row& row) {
  const bool frame_enabled = !row.Parent || Enabled_States[Tab(*row.Parent)];
  const HWND handle = Handle(row.Id);
  const bool enabled = Enabled_States[Tab(row.Id)] && frame_enabled;
  if (!enabled && GetFocus() == handle) SetFocus(Handle(Quit_Control));
  EnableWindow(handle, enabled);
}

bool Windows_Window::Read_Value(Control option) const {
  return SendMessageW(Handle(option), BM_GETCHECK, 0, 0) == BST_CHECKED;
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
  std::vector<wchar_t> path(longest_path);
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
}

void Windows_Window::Yield() {
  Pace.Run([this] {
    Log.Show();
    Handle_Pending();
  });
}

Drop_List* Windows_Window::List_Of(Control control) {
  return Is_List(control) ? &Lists[Tab(control)] : nullptr;
}

Drop_List* Windows_Window::List_Of(HWND window) {
  for (Drop_List& list : Lists) {
    const HWND box = list.Control_Handle();
    if (box != nullptr && (window == box || IsChild(box, window))) return &list;
  }
  return nullptr;
}

}  // namespace rivelt
