#include "platform/qt/qt_window.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QFileDialog>
#include <QIcon>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>

#include "platform/qt/log_view.h"
#include "platform/qt/menu_bar.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/rivelt.xpm"
#include "window/one_line.h"

namespace rivelt {
namespace {

// Wide enough to read its longest entry, as far as the screen goes.
void Fit_Popup_Width(QComboBox& list, const QString& longest_entry) {
  QAbstractItemView& view = *list.view();
  const QFontMetrics metrics(view.font());
  const auto average = static_cast<qsizetype>(metrics.averageCharWidth()) * longest_entry.size();
  const int text = std::max(metrics.horizontalAdvance(longest_entry), static_cast<int>(average));
  const int wanted = text + view.verticalScrollBar()->sizeHint().width() + 16;
  const int screen_width = list.screen()->availableGeometry().width();
  view.setMinimumWidth(std::clamp(wanted, list.width(), std::max(list.width(), screen_width - 16)));
}

}  // namespace

Qt_Window::Qt_Window() {
  Build_Form();
  for (const Control_Row& row : Control_Table) Connect(row);
  auto* quit_key = new QShortcut(Qt::Key_Escape, &Form);
  QObject::connect(quit_key, &QShortcut::activated, [this] { Press(Quit_Control); });
  const Input_Filter::Passing passing{&Form, &Log(),
                                      static_cast<QPushButton*>(&Widget(Quit_Control)), quit_key};
  Filter =
      std::make_unique<Input_Filter>(passing, [this] { return Is_Dropping || Gate.Working(); });
}

void Qt_Window::Build_Form() {
  Form.setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                      Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                      Qt::WindowCloseButtonHint);
  Form.setWindowTitle(To_Qt(Window_Caption));
  Form.setWindowIcon(QIcon(QPixmap(Icon_Picture)));
  Form.On_Close = [this] { Gate.Close(); };
  Client.setFixedSize(Client_Area());
  All = Build_Widgets(Client, Entries);
  auto* layout = new QVBoxLayout(&Form);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  layout->setMenuBar(Build_Menu_Bar(
      Gate, [this](Menu_Entry entry, const Text& backup) { Choose(entry, backup); }, Form));
  layout->addWidget(&Client);
}

void Qt_Window::Connect(const Control_Row& row) {
  const auto changed = [this, control = row.Id] { Changed(control); };
  QWidget* widget = &Widget(row.Id);
  if (const auto* list = List_Of(row.Id)) {
    QObject::connect(list, &QComboBox::currentIndexChanged, changed);
    QObject::connect(list, &QComboBox::activated, changed);  // picked once more
  } else if (const auto* text_box = qobject_cast<QLineEdit*>(widget)) {
    QObject::connect(text_box, &QLineEdit::textChanged, changed);
  } else if (const auto* option = qobject_cast<QRadioButton*>(widget)) {
    QObject::connect(option, &QRadioButton::toggled, [changed](bool on) {
      if (on) changed();
    });
  } else if (const auto* button = qobject_cast<QPushButton*>(widget)) {
    QObject::connect(button, &QPushButton::clicked, [this, control = row.Id] { Press(control); });
  }
}

void Qt_Window::Start(Registry& registry, Create_File_System_Object create_object) {
  Gate.Start_Up(registry, std::move(create_object));
  Finish_Work();
}

void Qt_Window::Press(Control button) {
  // A button can be pressed by a key some time after the key.
  if (Is_Dropping && button != Quit_Control) return;
  const bool starts_command = !Gate.Working();
  Gate.Raise(button);
  if (starts_command) Finish_Work();
}

void Qt_Window::Choose(Menu_Entry entry, const Text& backup) {
  if (Gate.Working() || Is_Dropping) return;
  Gate.Choose(entry, backup);
  Finish_Work();
}

void Qt_Window::Changed(Control control) {
  if (Is_Own_Change) return;
  if (Gate.Working() || Is_Dropping) return Put_Back(control);
  Take_Over(control);
  Gate.Raise(control);
}

void Qt_Window::Take_Over(Control control) {
  Text& text = States.Texts[Tab(control)];
  if (const auto* list = List_Of(control)) {
    text = From_Qt(list->currentText());
  } else if (const auto* box = qobject_cast<QLineEdit*>(&Widget(control))) {
    text = From_Qt(box->text());
    auto caret = static_cast<std::size_t>(box->cursorPosition());
    if (Cut_To_One_Line(text, caret)) Put_Line(control, text, caret);
  } else {
    States.Selected_Option = control;
  }
}

void Qt_Window::Put_Back(Control control) {
  const QScopedValueRollback own(Is_Own_Change, true);
  const Text& text = States.Texts[Tab(control)];
  if (auto* list = List_Of(control)) {
    const auto& model = static_cast<const Entry_Model&>(*list->model());
    list->setCurrentIndex(text.empty() ? -1 : model.Row_Of_Entry(text));
  } else if (qobject_cast<QLineEdit*>(&Widget(control)) != nullptr) {
    Put_Line(control, text, text.size());
  } else if (qobject_cast<QRadioButton*>(&Widget(control)) != nullptr) {
    static_cast<QRadioButton&>(Widget(States.Selected_Option)).setChecked(true);
  }
}

void Qt_Window::Put_Line(Control text_box, const Text& line, std::size_t caret) {
  const QScopedValueRollback own(Is_Own_Change, true);
  auto& box = static_cast<QLineEdit&>(Widget(text_box));
  box.setText(To_Qt(line));
  box.setCursorPosition(static_cast<int>(caret));
}

void Qt_Window::Finish_Work() {
  Publish_Entries();
  Drop_Pending_Input();
  Log().Show_News();
}

void Qt_Window::Drop_Pending_Input() {
  if (Is_Dropping) return;
  const QScopedValueRollback dropping(Is_Dropping, true);
  QGuiApplication::sync();
}

void Qt_Window::Form_With_Close::closeEvent(QCloseEvent* event) {
  event->ignore();
  On_Close();
}

void Qt_Window::Show() {
  {
    const QScopedValueRollback own(Is_Own_Change, true);
    States = {};
    Entries.Reset();
  }
  Publish_Entries();
  for (const Control_Row& row : Control_Table) {
    Widget(row.Id).setEnabled(row.Enabled_At_Start);
    Put_Back(row.Id);
  }
  Log().Write({});
  Form.show();
  const QDeadlineTimer patience(200);
  while (!Form.windowHandle()->isExposed() && !patience.hasExpired()) {
    QApplication::processEvents();
  }
}

void Qt_Window::Unload() {
  Form.hide();
  if (On_Unload) On_Unload();
}

Log_View& Qt_Window::Log() const {
  return static_cast<Log_View&>(Widget(Log_Control));
}

Text Qt_Window::Read_Text(Control control) const {
  if (control == Log_Control) return Log().Content();
  return States.Texts[Tab(control)];
}

void Qt_Window::Write_Log(Text_View text) {
  Log().Write(text);
}

void Qt_Window::Append_Log(Text_View text) {
  Log().Append(text);
  if (!Gate.Working()) Log().Show_News();
}

void Qt_Window::Add_Item(Control list, Text_View entry) {
  Entries.Add(list, entry);
  // A procedure adds many; they are published when it ends.
  if (!Gate.Working()) Publish_Entries();
}

void Qt_Window::Publish_Entries() {
  for (Entry_Model& model : Entries) {
    if (model.Has_News()) Publish(model);
  }
}

void Qt_Window::Publish(Entry_Model& model) {
  const QScopedValueRollback own(Is_Own_Change, true);
  model.Publish();
  for (const Control_Row& row : Control_Table) {
    QComboBox* list = List_Of(row.Id);
    if (list == nullptr || list->model() != &model) continue;
    Put_Back(row.Id);
    Fit_Popup_Width(*list, model.Longest_Entry());
  }
}

QComboBox* Qt_Window::List_Of(Control control) const {
  return qobject_cast<QComboBox*>(&Widget(control));
}

void Qt_Window::Set_Pointer(Pointer pointer) {
  if (pointer == Current_Pointer) return;
  Current_Pointer = pointer;
  if (pointer == Pointer::Hourglass) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QApplication::restoreOverrideCursor();
  }
}

int Qt_Window::Message_Box(Text_View text, int style, std::optional<Text_View> title) {
  Finish_Work();
  QMessageBox box(&Form);
  box.setWindowTitle(To_Qt(title.value_or(Window_Caption)));
  box.setTextFormat(Qt::PlainText);
  box.setText(To_Qt(text));
  box.setIcon((style & Style_Question) != 0      ? QMessageBox::Question
              : (style & Style_Information) != 0 ? QMessageBox::Information
                                                 : QMessageBox::Critical);
  const bool can_cancel = (style & Style_Ok_Cancel) != 0;
  box.setStandardButtons(can_cancel ? QMessageBox::Ok | QMessageBox::Cancel : QMessageBox::Ok);
  box.setDefaultButton(QMessageBox::Ok);
  return box.exec() == QMessageBox::Ok ? Answer_Ok : Answer_Ok + 1;
}

void Qt_Window::Show_Save_Dialog() {
  Chosen_File_Name.clear();
  Finish_Work();
  QFileDialog dialog(&Form);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  if (!Last_Saved.empty()) dialog.selectFile(To_Qt(Last_Saved));
  if (dialog.exec() == QDialog::Accepted) {
    Last_Saved = Chosen_File_Name = From_Qt(dialog.selectedFiles().value(0));
  }
}

Text Qt_Window::Ask_For_Folder() {
  Finish_Work();
  return From_Qt(QFileDialog::getExistingDirectory(&Form));
}

void Qt_Window::Beep() {
  QApplication::beep();
}

void Qt_Window::Yield() {
  Pace.Run([this] {
    Log().Show_News();
    QApplication::processEvents();
  });
}

}  // namespace rivelt
