#include "platform/windows/measures.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace rivelt {
namespace {

constexpr int Twips_Per_Inch = 1440;

int Pixels(int twips, UINT dpi) {
  return MulDiv(twips, static_cast<int>(dpi), Twips_Per_Inch);
}

// A function that only newer systems have; null on the others.
template <class Function>
Function* From_User32(const char* name) {
  const FARPROC address = GetProcAddress(GetModuleHandleW(L"user32.dll"), name);
  Function* function = nullptr;
  static_assert(sizeof function == sizeof address);
  std::memcpy(&function, &address, sizeof function);
  return function;
}

UINT System_Dpi() {
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return static_cast<UINT>(dpi);
}

struct Twips_Rect {
  int Left, Top, Right, Bottom;
};

Twips_Rect In_Window(const Control_Row& row) {
  const bool in_frame = row.Parent == Control_Parent::Transform;
  const int left = row.Left + (in_frame ? Row_Of(Control::Transform).Left : 0);
  const int top = row.Top + (in_frame ? Row_Of(Control::Transform).Top : 0);
  return {left, top, left + row.Width, top + row.Height};
}

bool Is_Beside(const Control_Row& row, const Control_Row& later) {
  return later.Tab > row.Tab && later.Parent == row.Parent && later.Top == row.Top &&
         later.Left > row.Left;
}

}  // namespace

UINT Dpi_Of(HWND window) {
  static const auto get_dpi = From_User32<UINT WINAPI(HWND)>("GetDpiForWindow");
  return get_dpi != nullptr ? get_dpi(window) : System_Dpi();
}

Owned_Font Message_Font(UINT dpi) {
  static const auto get_for_dpi =
      From_User32<BOOL WINAPI(UINT, UINT, PVOID, UINT, UINT)>("SystemParametersInfoForDpi");
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  if (get_for_dpi == nullptr ||
      !get_for_dpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi)) {
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, static_cast<int>(dpi),
                                            static_cast<int>(System_Dpi()));
  }
  return Owned_Font(CreateFontIndirectW(&metrics.lfMessageFont));
}

SIZE Client_Size(UINT dpi) {
  return {Pixels(Client_Width, dpi), Pixels(Client_Height, dpi)};
}

RECT Place_Of(const Control_Row& row, UINT dpi) {
  Twips_Rect area = In_Window(row);
  for (const Control_Row& other : Control_Table) {
    if (Is_Beside(row, other)) area.Right = std::min(area.Right, In_Window(other).Left);
  }
  return {Pixels(area.Left, dpi), Pixels(area.Top, dpi), Pixels(area.Right, dpi),
          Pixels(area.Bottom, dpi)};
}

}  // namespace rivelt
