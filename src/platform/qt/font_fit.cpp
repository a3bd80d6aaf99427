#include "platform/qt/font_fit.h"

#include <QFontInfo>
#include <QFontMetricsF>

namespace rivelt {

QFont Fitting_Font(const QFont& largest, QSize space, const QString& text) {
  constexpr int smallest_pixel_size = 5;
  QFont font = largest;
  for (int size = QFontInfo(largest).pixelSize(); size >= smallest_pixel_size; --size) {
    font.setPixelSize(size);
    const QFontMetricsF metrics(font);
    // On screens with a broken scale the glyphs come out up to a pixel wider in all.
    if (metrics.height() <= space.height() &&
        metrics.horizontalAdvance(text) + 1 <= space.width()) {
      break;
    }
  }
  return font;
}

}  // namespace rivelt
