// The person in front of the window on a screen of Qt, with mouse and keys.

#pragma once

#include <QTest>
#include <QtWidgets>
#include <algorithm>

#include "platform/qt/log_view.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/qt_window.h"
#include "window_user.h"

namespace rivelt {

class Qt_Window_User : public Window_User {
 public:
  Qt_Window_User() {
    QObject::connect(&Look_For_Dialogs, &QTimer::timeout, [this] { Answer_Dialog(); });
    Look_For_Dialogs.start(5);
  }

  void Start(Registry& registry, Create_File_System_Object create_object) override {
    Screen.Start(registry, std::move(create_object));
    Activate();
  }
  void Pick(Control list, Text_View entry) override {
    auto& box = static_cast<QComboBox&>(Screen.Widget(list));
    Press(list);
    if (box.view()->isVisible()) {
      const int row = box.findText(To_Qt(entry), Qt::MatchExactly | Qt::MatchCaseSensitive);
      box.view()->setCurrentIndex(box.model()->index(row, 0));
      QTest::keyClick(box.view(), Qt::Key_Return);
      Activate();
    } else {
      QTest::keyClick(&box, Qt::Key_Down);
    }
  }
  void Type(Control text_box, Text_View text) override {
    QWidget& box = Screen.Widget(text_box);
    Press(text_box);
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    for (const char16_t unit : text) {
      QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_unknown, QString(QChar(unit)),
                          Qt::NoModifier);
    }
  }
  void Paste(Control text_box, Text_View text) override {
    QApplication::clipboard()->setText(To_Qt(text));
    QTest::keyClick(&Screen.Widget(text_box), Qt::Key_End);
    QTest::keyClick(&Screen.Widget(text_box), Qt::Key_V, Qt::ControlModifier);
  }
  void Press(Control button) override { Click(Screen.Widget(button), QPoint(8, 8)); }
  void Choose(Text_View entry, Text_View choice) override {
    QMenu* menu = Open_Menu();
    for (const Text_View caption : {entry, choice}) {
      if (menu != nullptr && !caption.empty()) menu = Click_Entry(*menu, caption);
    }
    Leave_Menus();
  }
  Lines Menu() override { return Entries_Of(Open_Menu()); }
  Lines Choices() override {
    QMenu* choices = nullptr;
    for (const QAction* action : Open_Menu()->actions()) {
      if (action->menu() != nullptr) choices = action->menu();
    }
    return Entries_Of(choices);
  }
  void Set_By_Aid(Control control, Text_View value) override {
    QWidget& widget = Screen.Widget(control);
    if (auto* list = qobject_cast<QComboBox*>(&widget)) {
      list->setCurrentIndex(list->findText(To_Qt(value)));
    } else if (auto* box = qobject_cast<QLineEdit*>(&widget)) {
      box->setText(To_Qt(value));
    } else {
      static_cast<QRadioButton&>(widget).setChecked(true);
    }
  }
  void Close() override { Screen.Form_Widget().close(); }

  bool Visible() const override { return const_cast<Qt_Window&>(Screen).Form_Widget().isVisible(); }
  bool Takes_Input(Control control) const override { return Screen.Widget(control).isEnabled(); }
  Text Shown_Text(Control control) const override {
    const QWidget& widget = Screen.Widget(control);
    if (const auto* log = dynamic_cast<const Log_View*>(&widget)) {
      return From_Qt(log->toPlainText().replace(QLatin1String("\n"), QLatin1String("\r\n")));
    }
    const bool is_list = Row_Of(control).Type == Control_Type::Drop_Down_List;
    const bool is_frame = Row_Of(control).Type == Control_Type::Frame;
    return From_Qt(widget.property(is_list    ? "currentText"
                                   : is_frame ? "title"
                                              : "text")
                       .toString());
  }
  Lines Entries(Control list) const override {
    const auto& box = static_cast<QComboBox&>(Screen.Widget(list));
    Lines entries;
    for (int row = 0; row < box.count(); ++row) entries.push_back(From_Qt(box.itemText(row)));
    return entries;
  }
  bool Hourglass() const override {
    const QCursor* pointer = QApplication::overrideCursor();
    return pointer != nullptr && pointer->shape() == Qt::WaitCursor;
  }
  Window& Seam() override { return Screen; }

  // Gives the window the keyboard back after a list or a dialog: the screen of the tests has no
  // window manager that does.
  void Activate() {
    if (!Visible()) return;
    QWidget& form = Screen.Form_Widget();
    form.activateWindow();
    if (!QTest::qWaitFor([&] { return QApplication::activeWindow() == &form; })) {
      qFatal("the window does not become the active one");
    }
  }

  // A click on the window, which it hands on to what is there.
  static void Click(const QWidget& widget, QPoint place) {
    const QWidget* window = widget.window();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, widget.mapTo(window, place));
  }

  Qt_Window Screen;
  int Save_Dialogs = 0;  // that have come up
  QString Offered_File;  // by the last of them

 private:
  // Null: none comes up.
  QMenu* Open_Menu() {
    const auto* bar = Screen.Form_Widget().findChild<QMenuBar*>();
    Click(*bar, bar->actionGeometry(bar->actions().at(0)).center());
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }
  // The sub-menu that it opens, if any.
  static QMenu* Click_Entry(const QMenu& menu, Text_View caption) {
    for (const QAction* action : menu.actions()) {
      if (action->text() == To_Qt(caption)) {
        Click(menu, menu.actionGeometry(const_cast<QAction*>(action)).center());
        return action->menu();
      }
    }
    return nullptr;
  }
  Lines Entries_Of(const QMenu* menu) {
    Lines entries;
    for (const QAction* action : menu->actions()) {
      if (action->isSeparator() || !action->isEnabled()) continue;
      entries.push_back(From_Qt((action->isChecked() ? u"x "_qs : QString()) + action->text()));
    }
    Leave_Menus();
    return entries;
  }
  void Leave_Menus() {
    while (QApplication::activePopupWidget() != nullptr) {
      QTest::keyClick(Screen.Form_Widget().windowHandle(), Qt::Key_Escape);
    }
  }

  void Answer_Dialog() {
    QWidget* dialog = QApplication::activeModalWidget();
    if (const auto* box = qobject_cast<QMessageBox*>(dialog)) {
      int style = box->icon() == QMessageBox::Critical ? Style_Critical : 0;
      if (box->icon() == QMessageBox::Question) style += Style_Question;
      if (box->icon() == QMessageBox::Information) style += Style_Information;
      if (box->standardButtons().testFlag(QMessageBox::Cancel)) style += Style_Ok_Cancel;
      const bool cancels =
          Cancels_Box(Box_Text(From_Qt(box->windowTitle()), style, From_Qt(box->text())));
      QTest::keyClick(dialog, cancels ? Qt::Key_Escape : Qt::Key_Return);
    } else if (qobject_cast<QFileDialog*>(dialog) != nullptr) {
      ++Save_Dialogs;
      auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
      Offered_File = name->text();
      const Text path = Next_Path();
      if (path.empty()) return QTest::keyClick(dialog, Qt::Key_Escape);
      name->setText(To_Qt(path));
      // Later, so that a question that comes up then is answered, too.
      QTimer::singleShot(0, name, [name] { QTest::keyClick(name, Qt::Key_Return); });
    }
  }

  QTimer Look_For_Dialogs;
};

}  // namespace rivelt
