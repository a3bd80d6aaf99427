#include "platform/windows/control_kinds.h"

namespace rivelt {
namespace {

constexpr int First_Command_Id = 100;

// The arrow keys stay within a group: only the options are more than one.
DWORD Group_Style(const Control_Row& row) {
  const bool is_option = row.Type == Control_Type::Option_Button;
  return is_option && row.Id != Selected_At_Start ? 0 : WS_GROUP;
}

}  // namespace

Control_Kind Kind_Of(const Control_Row& row) {
  const DWORD group = Group_Style(row);
  switch (row.Type) {
    case Control_Type::Label:
      return {L"STATIC", SS_LEFT | SS_NOPREFIX | group, 0};
    case Control_Type::Drop_Down_List:
      return {L"COMBOBOX", CBS_DROPDOWNLIST | CBS_HASSTRINGS | WS_VSCROLL | WS_TABSTOP | group, 0};
    case Control_Type::Option_Button:
      // Of a group the one that is selected can be reached by Tab.
      return {L"BUTTON", BS_AUTORADIOBUTTON | group | (group != 0 ? WS_TABSTOP : 0), 0};
    case Control_Type::Frame:
      return {L"BUTTON", BS_GROUPBOX | group, 0};
    case Control_Type::Text_Box:
      return {L"EDIT", ES_AUTOHSCROLL | WS_TABSTOP | group, WS_EX_CLIENTEDGE};
    case Control_Type::Log_Text_Box:
      return {L"EDIT",
              ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | WS_VSCROLL | WS_TABSTOP | group,
              WS_EX_CLIENTEDGE};
    case Control_Type::Command_Button:
      return {L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP | group, 0};
  }
  return {};
}

int Command_Id(Control control) {
  return control == Quit_Control ? IDCANCEL : First_Command_Id + static_cast<int>(control);
}

std::optional<Control> Control_Of(int command_id) {
  for (const Control_Row& row : Control_Table) {
    if (Command_Id(row.Id) == command_id) return row.Id;
  }
  return std::nullopt;
}

}  // namespace rivelt
