#include "platform/qt/qt_application.h"

#include <QApplication>
#include <QGuiApplication>
#include <QSettings>

#include "platform/qt/classic_style.h"

namespace rivelt {

void Prepare_Qt() {
  QCoreApplication::setApplicationName(QStringLiteral("rivelt"));
  QGuiApplication::setDesktopFileName(QStringLiteral("rivelt"));
  QApplication::setStyle(new Classic_Style);
  // The toolkit's save dialog would remember its folders from one run to the next.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
}

}  // namespace rivelt
