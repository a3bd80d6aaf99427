// The menu bar of the window.

#pragma once

#include <functional>

#include "form/event_gate.h"
#include "platform/windows/win32.h"

namespace rivelt {

class Menu_Bar {
 public:
  // The gate gives the state of the entries when the menu opens. It must outlive the bar.
  explicit Menu_Bar(const Event_Gate& gate) : Gate(gate) {}

  // Gives the window the bar, which it owns from then on.
  void Attach(HWND window);

  // The menu, or a part of it, is about to show.
  void Opens(HMENU part);

  // Chooses the entry that has sent the command. False: no entry has.
  bool Take(UINT command, const std::function<void(Menu_Entry, const Text& backup)>& choose);

 private:
  const Event_Gate& Gate;
  HMENU Entries = nullptr;
  HMENU Choices = nullptr;  // of the one sub-menu
};

}  // namespace rivelt
