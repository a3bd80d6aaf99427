// What the system's own kinds of control are to those of the table.

#pragma once

#include <optional>

#include "platform/windows/win32.h"
#include "window/controls.h"

namespace rivelt {

struct Control_Kind {
  const wchar_t* Class;
  DWORD Style;
  DWORD Extended_Style;
};
Control_Kind Kind_Of(const Control_Row& row);

// The number under which a control reports. That of Quit is the one that Esc stands for.
int Command_Id(Control control);
std::optional<Control> Control_Of(int command_id);

}  // namespace rivelt
