#include "platform/qt/classic_style.h"

namespace rivelt {

Classic_Style::Classic_Style() : QProxyStyle(QStringLiteral("windows")) {}

int Classic_Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                             QStyleHintReturn* data) const {
  if (hint == SH_ComboBox_Popup) return 0;
  return QProxyStyle::styleHint(hint, option, widget, data);
}

}  // namespace rivelt
