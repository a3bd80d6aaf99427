#pragma once

#include <QProxyStyle>

namespace rivelt {

// A style with thin frames, which the fixed places of the controls need; that of the desktop may
// want boxes twice as high. Drop-down lists open below their box and scroll.
class Classic_Style : public QProxyStyle {
 public:
  Classic_Style();
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override;
};

}  // namespace rivelt
