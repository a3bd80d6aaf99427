#include "platform/windows/menu_bar.h"

namespace rivelt {
namespace {

// Above the numbers of the controls.
constexpr UINT First_Entry = 1000;
constexpr UINT First_Choice = First_Entry + 100;

UINT Command_Of(Menu_Entry entry) {
  return First_Entry + static_cast<UINT>(entry);
}

}  // namespace

void Menu_Bar::Attach(HWND window) {
  Entries = CreatePopupMenu();
  Choices = CreatePopupMenu();
  for (const Menu_Row& row : Menu_Table) {
    if (row.After_Line) AppendMenuW(Entries, MF_SEPARATOR, 0, nullptr);
    MENUITEMINFOW item{};
    item.cbSize = sizeof item;
    item.fMask = MIIM_ID | MIIM_STRING | MIIM_SUBMENU;
    item.wID = Command_Of(row.Id);
    item.hSubMenu = row.Kind == Menu_Kind::Sub_Menu ? Choices : nullptr;
    std::wstring caption = To_Wide(row.Caption);
    item.dwTypeData = caption.data();
    InsertMenuItemW(Entries, UINT_MAX, TRUE, &item);
  }
  const HMENU bar = CreateMenu();
  AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(Entries), To_Wide(Menu_Caption).c_str());
  SetMenu(window, bar);
}

void Menu_Bar::Opens(HMENU part) {
  if (part != Entries) return;
  for (const Menu_Row& row : Menu_Table) {
    const bool enabled = Gate.Can_Choose(row.Id);
    const bool checked = row.Kind == Menu_Kind::Check_Mark && Gate.Whole_Route();
    EnableMenuItem(Entries, Command_Of(row.Id), enabled ? MF_ENABLED : MF_GRAYED);
    CheckMenuItem(Entries, Command_Of(row.Id), checked ? MF_CHECKED : MF_UNCHECKED);
  }
  while (DeleteMenu(Choices, 0, MF_BYPOSITION)) continue;
  UINT command = First_Choice;
  for (const Text& backup : Gate.Restorable()) {
    AppendMenuW(Choices, MF_STRING, command++, To_Wide(backup).c_str());
  }
}

bool Menu_Bar::Take(UINT command,
                    const std::function<void(Menu_Entry, const Text& backup)>& choose) {
  for (const Menu_Row& row : Menu_Table) {
    if (command != Command_Of(row.Id)) continue;
    choose(row.Id, {});
    return true;
  }
  wchar_t backup[64] = {};
  if (command < First_Choice || GetMenuStringW(Choices, command, backup, 64, MF_BYCOMMAND) == 0) {
    return false;
  }
  choose(Menu_Entry::Restore, From_Wide(backup));
  return true;
}

}  // namespace rivelt
