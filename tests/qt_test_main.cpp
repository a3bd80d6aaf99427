#include <gtest/gtest.h>

#include <QApplication>

#include "platform/qt/qt_application.h"
#include "qt_window_user.h"

std::vector<rivelt::Window_Back_End> rivelt::Window_Back_Ends() {
  return {{"Qt", [] { return std::make_unique<Qt_Window_User>(); }}};
}

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  rivelt::Prepare_Qt();
  return RUN_ALL_TESTS();
}
