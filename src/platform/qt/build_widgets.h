// Makes the widgets of the table of controls.

#pragma once

#include <QWidget>
#include <array>

#include "platform/qt/entry_model.h"
#include "window/controls.h"
#include "window/list_entries.h"

namespace rivelt {

// By tab position. They belong to the client area.
using Widgets = std::array<QWidget*, Control_Count>;

// In pixels at 100 %.
QSize Client_Area();

// All controls at their places in the client area, in their tab order.
Widgets Build_Widgets(QWidget& client, List_Entries<Entry_Model>& entries);

// Where the text of the control is.
QRect Text_Space(const QWidget& widget, const Control_Row& row);

}  // namespace rivelt
