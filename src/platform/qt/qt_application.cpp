#include "platform/qt/qt_application.h"

#include <QApplication>
#include <QGuiApplication>
#include <QProxyStyle>
#include <QSettings>

namespace rivelt {
namespace {

// A style with thin frames, which the fixed places of the controls need; that of the desktop may
// want boxes twice as high. Drop-down lists open below their box and scroll.
class Classic_Style : public QProxyStyle {
 public:
  Classic_Style() : QProxyStyle(QStringLiteral("windows")) {}
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    return hint == SH_ComboBox_Popup ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
  }
};

}  // namespace

void Prepare_Qt() {
  QCoreApplication::setApplicationName(QStringLiteral("rivelt"));
  QGuiApplication::setDesktopFileName(QStringLiteral("rivelt"));
  QApplication::setStyle(new Classic_Style);
  // The toolkit's save dialog would remember its folders from one run to the next.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
}

}  // namespace rivelt
