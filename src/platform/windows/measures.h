// What depends on the screen that the window is on.

#pragma once

#include <memory>

#include "platform/windows/win32.h"
#include "window/controls.h"

namespace rivelt {

struct Delete_Gdi_Object {
  void operator()(HFONT font) const { DeleteObject(font); }
};
using Owned_Font = std::unique_ptr<std::remove_pointer_t<HFONT>, Delete_Gdi_Object>;

// Dots per inch of the screen of the window; 96 at 100 %.
UINT Dpi_Of(HWND window);

// The system's font for messages.
Owned_Font Message_Font(UINT dpi);

// The window's client area, in pixels.
SIZE Client_Size(UINT dpi);

// The place of the visible part of a control in the client area, in pixels.
RECT Place_Of(const Control_Row& row, UINT dpi);

}  // namespace rivelt
