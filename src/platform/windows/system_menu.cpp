#include "platform/windows/system_menu.h"

#include <utility>

#include "window/form_menu.h"

namespace rivelt {
namespace {

// The system keeps the low four bits of a command for itself, and the commands from 0xF000 on.
constexpr UINT Step = 0x10;
constexpr UINT Whole_Route_Command = Step;
constexpr UINT First_Backup_Command = 2 * Step;
static_assert(First_Backup_Command + Most_Restorable * Step <= 0xF000);

UINT Greyed_Unless(bool enabled) {
  return enabled ? MF_ENABLED : MF_GRAYED;
}

}  // namespace

System_Menu::System_Menu(Event_Gate& gate, std::function<void(const Text& time)> restore)
    : Gate(gate), Restore(std::move(restore)) {}

void System_Menu::Attach(HWND window) {
  Menu = GetSystemMenu(window, FALSE);
  Backups = CreatePopupMenu();
  AppendMenuW(Menu, MF_SEPARATOR, 0, nullptr);
  AppendMenuW(Menu, MF_STRING, Whole_Route_Command, To_Wide(Whole_Route_Caption).c_str());
  AppendMenuW(Menu, MF_POPUP, reinterpret_cast<UINT_PTR>(Backups),
              To_Wide(Restore_Caption).c_str());
}

void System_Menu::Opens(HMENU part) {
  if (part == Backups) return;  // filled with the menu, which shows whether there are any
  CheckMenuItem(Menu, Whole_Route_Command, Gate.Whole_Route() ? MF_CHECKED : MF_UNCHECKED);
  EnableMenuItem(Menu, Whole_Route_Command, Greyed_Unless(Gate.Menu_Enabled()));
  while (DeleteMenu(Backups, 0, MF_BYPOSITION)) continue;
  Times = Gate.Restorable();
  UINT command = First_Backup_Command;
  for (const Text& time : Times) {
    AppendMenuW(Backups, MF_STRING, command, To_Wide(time).c_str());
    command += Step;
  }
  const auto last = static_cast<UINT>(GetMenuItemCount(Menu) - 1);
  EnableMenuItem(Menu, last, MF_BYPOSITION | Greyed_Unless(!Times.empty()));
}

bool System_Menu::Take(WPARAM command) {
  if (command < Step) return false;
  const std::size_t entry = command / Step;
  if (entry * Step == Whole_Route_Command) {
    Gate.Toggle_Whole_Route();
    return true;
  }
  const std::size_t backup = entry - First_Backup_Command / Step;
  if (backup >= Times.size()) return false;
  Restore(Text(Times[backup]));
  return true;
}

}  // namespace rivelt
