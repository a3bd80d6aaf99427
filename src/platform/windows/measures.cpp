#include "platform/windows/measures.h"

#include <cstring>

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
  const int left = row.Parent ? Row_Of(*row.Parent).Left : 0;
  const int top = row.Parent ? Row_Of(*row.Parent).Top : 0;
  const Twips_Rect area = Visible_Part(row);
  return {Pixels(left + area.Left, dpi), Pixels(top + area.Top, dpi),
          Pixels(left + area.Right, dpi), Pixels(top + area.Bottom, dpi)};
}

}  // namespace rivelt
