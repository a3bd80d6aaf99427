// The form's menu on Windows: the window's system menu with our entries at its end.

#pragma once

#include <functional>
#include <vector>

#include "form/event_gate.h"
#include "platform/windows/win32.h"

namespace rivelt {

class System_Menu {
 public:
  System_Menu(Event_Gate& gate, std::function<void(const Text& time)> restore);

  // Appends the entries to the system menu of the window, which owns them from then on.
  void Attach(HWND window);

  // The menu, or a part of it, is about to show.
  void Opens(HMENU part);

  // False: the command of WM_SYSCOMMAND is none of ours.
  bool Take(WPARAM command);

 private:
  Event_Gate& Gate;
  std::function<void(const Text& time)> Restore;
  HMENU Menu = nullptr;
  HMENU Backups = nullptr;
  std::vector<Text> Times;  // of the backups, as the menu has them
};

}  // namespace rivelt
