#include "platform/window_program.h"

#include <QApplication>
#include <QTimer>

#include "platform/machine.h"
#include "platform/qt/qt_application.h"
#include "platform/qt/qt_window.h"

namespace rivelt {

int Run_Window_Program(char* program_name) {
  char* arguments[] = {program_name, nullptr};
  int argument_count = 1;
  const QApplication application(argument_count, arguments);
  Prepare_Qt();
  const auto registry = Machine_Registry();
  Qt_Window window;
  window.On_Unload = [] { QCoreApplication::exit(0); };
  // From within the event loop, so that a close during the start can end it.
  QTimer::singleShot(0, [&] { window.Start(*registry, Machine_Files); });
  return QCoreApplication::exec();
}

}  // namespace rivelt
