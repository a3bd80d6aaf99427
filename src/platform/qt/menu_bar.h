// The menu bar of the form.

#pragma once

#include <QMenuBar>
#include <functional>

#include "form/event_gate.h"

namespace rivelt {

using Choose_Entry = std::function<void(Menu_Entry entry, const Text& backup)>;

// Belongs to the form. The gate gives the state of its entries when it opens, and must outlive
// it.
QMenuBar* Build_Menu_Bar(const Event_Gate& gate, const Choose_Entry& choose, QWidget& form);

}  // namespace rivelt
