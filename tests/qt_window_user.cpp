#include "qt_window_user.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QTest>
#include <utility>

#include "platform/qt/log_view.h"
#include "platform/qt/qt_text.h"

namespace rivelt {
namespace {

int Style_Of(const QMessageBox& box) {
  const int icon = box.icon() == QMessageBox::Critical   ? Style_Critical
                   : box.icon() == QMessageBox::Question ? Style_Question
                                                         : 0;
  const bool can_cancel = box.standardButtons() == (QMessageBox::Ok | QMessageBox::Cancel);
  return icon + (can_cancel ? Style_Ok_Cancel : 0);
}

}  // namespace

Qt_Window_User::Qt_Window_User() {
  QObject::connect(&Look_For_Dialogs, &QTimer::timeout, [this] { Answer_Dialog(); });
  Look_For_Dialogs.start(5);
}

void Qt_Window_User::Start(Registry& registry, Create_File_System_Object create_object) {
  Screen.Start(registry, std::move(create_object));
  Activate();
}

void Qt_Window_User::Activate() {
  if (!Visible()) return;
  Screen.Form_Widget().activateWindow();
  if (!QTest::qWaitForWindowActive(&Screen.Form_Widget())) {
    qFatal("the window does not become the active one");
  }
}

void Qt_Window_User::Pick(Control list, Text_View entry) {
  auto& box = static_cast<QComboBox&>(Screen.Widget(list));
  QTest::mouseClick(&box, Qt::LeftButton);
  if (box.view()->isVisible()) {
    QTest::keyClick(box.view(), Qt::Key_Home);
    for (int row = 0; row < box.findText(To_Qt(entry), Qt::MatchExactly | Qt::MatchCaseSensitive);
         ++row) {
      QTest::keyClick(box.view(), Qt::Key_Down);
    }
    QTest::keyClick(box.view(), Qt::Key_Return);
    Activate();
  } else {
    QTest::keyClick(&box, Qt::Key_Down);
  }
}

void Qt_Window_User::Type(Control text_box, Text_View text) {
  QWidget& box = Screen.Widget(text_box);
  QTest::mouseClick(&box, Qt::LeftButton);
  QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
  for (const char16_t unit : text) {
    QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_unknown, QString(QChar(unit)), Qt::NoModifier);
  }
}

void Qt_Window_User::Select(Control option) {
  QTest::mouseClick(&Screen.Widget(option), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
}

void Qt_Window_User::Press(Control button) {
  QTest::mouseClick(&Screen.Widget(button), Qt::LeftButton);
}

bool Qt_Window_User::Visible() const {
  return const_cast<Qt_Window&>(Screen).Form_Widget().isVisible();
}

bool Qt_Window_User::Takes_Input(Control control) const {
  return Screen.Widget(control).isEnabled();
}

Text Qt_Window_User::Shown_Text(Control control) const {
  const QWidget* widget = &Screen.Widget(control);
  if (control == Control::txtMessages) {
    const auto* log = static_cast<const Log_View*>(widget);
    EXPECT_TRUE(QTest::qWaitFor([&] { return log->Shows_Everything(); }));
    return From_Qt(log->toPlainText().replace(QLatin1String("\n"), QLatin1String("\r\n")));
  }
  if (const auto* list = qobject_cast<const QComboBox*>(widget)) {
    return From_Qt(list->currentText());
  }
  return From_Qt(static_cast<const QLineEdit*>(widget)->text());
}

std::vector<Text> Qt_Window_User::Entries(Control list) const {
  const auto& box = static_cast<QComboBox&>(Screen.Widget(list));
  std::vector<Text> entries;
  for (int row = 0; row < box.count(); ++row) entries.push_back(From_Qt(box.itemText(row)));
  return entries;
}

bool Qt_Window_User::Selected(Control option) const {
  return static_cast<QRadioButton&>(Screen.Widget(option)).isChecked();
}

bool Qt_Window_User::Hourglass() const {
  const QCursor* pointer = QApplication::overrideCursor();
  return pointer != nullptr && pointer->shape() == Qt::WaitCursor;
}

void Qt_Window_User::Answer_Dialog() {
  QWidget* dialog = QApplication::activeModalWidget();
  if (auto* box = qobject_cast<QMessageBox*>(dialog)) return Answer(*box);
  if (auto* save = qobject_cast<QFileDialog*>(dialog)) return Answer(*save);
}

void Qt_Window_User::Answer(QMessageBox& box) {
  Seen_Boxes.push_back({From_Qt(box.text()), From_Qt(box.windowTitle()), Style_Of(box)});
  const bool cancels = Cancels > 0;
  if (cancels) --Cancels;
  QTest::keyClick(&box, cancels ? Qt::Key_Escape : Qt::Key_Return);
}

void Qt_Window_User::Answer(QFileDialog& dialog) {
  ++Save_Dialogs;
  Text path;
  if (!Save_Paths.empty()) {
    path = Save_Paths.front();
    Save_Paths.pop_front();
  }
  if (path.empty()) {
    QTest::keyClick(&dialog, Qt::Key_Escape);
    return;
  }
  auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  name->setText(To_Qt(path));
  QTest::keyClick(name, Qt::Key_Return);
}

std::vector<Window_Back_End> Window_Back_Ends() {
  return {{"Qt", [] { return std::make_unique<Qt_Window_User>(); }}};
}

}  // namespace rivelt
