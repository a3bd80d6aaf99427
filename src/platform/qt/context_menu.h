// The form's menu on Linux, which a right click or the Menu key opens wherever no text box has a
// menu of its own.

#pragma once

#include <QMenu>
#include <functional>

#include "form/event_gate.h"

namespace rivelt {

class Context_Menu : public QMenu {
 public:
  // Opens over the form, to which it belongs. The gate must outlive its use.
  Context_Menu(Event_Gate& gate, std::function<void(const Text& time)> restore, QWidget& form);

 private:
  void Refresh();

  Event_Gate& Gate;
  QAction* Whole_Route;
  QMenu* Backups;
};

}  // namespace rivelt
