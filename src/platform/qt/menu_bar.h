// The menu bar of the form.

#pragma once

#include <QMenuBar>
#include <functional>

#include "form/event_gate.h"

namespace rivelt {

using Choose_Entry = std::function<void(Menu_Entry entry, const Text& backup)>;

// Belongs to the form. Its entries are as the gate, which must outlive it, says when the menu
// opens.
QMenuBar* Build_Menu_Bar(const Event_Gate& gate, const Choose_Entry& choose, QWidget& form);

}  // namespace rivelt
