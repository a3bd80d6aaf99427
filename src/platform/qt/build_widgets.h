// Makes the widgets of the table of controls.

#pragma once

#include <QWidget>
#include <array>

#include "platform/qt/entry_model.h"
#include "window/controls.h"
#include "window/list_entries.h"

namespace rivelt {

// By tab position. They belong to the form.
using Widgets = std::array<QWidget*, Control_Count>;

// Of the form, in pixels at 100 %.
QSize Client_Area();

// All controls at their places on the form, in their start state, in their tab order.
Widgets Build_Widgets(QWidget& form, List_Entries<Entry_Model>& entries);

// Where the text of the control is.
QRect Text_Space(const QWidget& widget, const Control_Row& row);

}  // namespace rivelt
