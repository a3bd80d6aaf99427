// Fonts that fit the fixed boxes of the controls.

#pragma once

#include <QFont>
#include <QSize>
#include <QString>

namespace rivelt {

// The largest font, not above the given one, in which a line of the text lies within the space (in
// pixels at 100 %). Without a text, its height alone counts.
QFont Fitting_Font(const QFont& largest, QSize space, const QString& text);

}  // namespace rivelt
