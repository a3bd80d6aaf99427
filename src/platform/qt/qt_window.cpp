#include "platform/qt/qt_window.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QDir>
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
#include <QWindow>
#include <algorithm>

#include "platform/qt/context_menu.h"
#include "platform/qt/log_view.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/rivelt.xpm"

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
  QObject::connect(quit_key, &QShortcut::activated, [this] { Raise(Quit_Control); });
  const Input_Filter::Passing passing{&Form, &Log(),
                                      static_cast<QPushButton*>(&Widget(Quit_Control)), quit_key};
  Filter =
      std::make_unique<Input_Filter>(passing, [this] { return Is_Dropping || Gate.Working(); });
  Publish_Entries();
}

void Qt_Window::Build_Form() {
  Form.setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                      Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                      Qt::WindowCloseButtonHint);
  Form.setFixedSize(Client_Area());
  Form.setWindowTitle(To_Qt(Window_Caption));
  Form.setWindowIcon(QIcon(QPixmap(Icon_Picture)));
  All = Build_Widgets(Form, Entries);
  Form.On_Close = [this] { Gate.Close(); };
  new Context_Menu(
      Gate, [this](const Text& time) { Restore(time); }, Form);
}

void Qt_Window::Connect(const Control_Row& row) {
  const auto raise = [this, control = row.Id] { Raise(control); };
  QWidget* widget = &Widget(row.Id);
  // The signals that only the user's doing sends.
  if (const auto* list = List_Of(row.Id)) {
    QObject::connect(list, &QComboBox::activated, raise);
  } else if (const auto* text_box = qobject_cast<QLineEdit*>(widget)) {
    QObject::connect(text_box, &QLineEdit::textEdited, raise);
  } else if (const auto* button = qobject_cast<QAbstractButton*>(widget)) {
    QObject::connect(button, &QAbstractButton::clicked, raise);
  }
}

void Qt_Window::Start(Registry& registry, Create_File_System_Object create_object) {
  Gate.Start_Up(registry, std::move(create_object));
  Finish_Work();
}

void Qt_Window::Raise(Control control) {
  const bool starts_command =
      !Gate.Working() && Row_Of(control).Type == Control_Type::Command_Button;
  // A button can be pressed by a key some time after the key.
  if (Is_Dropping && control != Quit_Control) return;
  if (const auto* list = List_Of(control)) {
    Picked[Tab(control)] = From_Qt(list->currentText());
  }
  Gate.Raise(control);
  if (starts_command) Finish_Work();
}

void Qt_Window::Restore(const Text& time) {
  Gate.Restore(time);
  Finish_Work();
}

void Qt_Window::Finish_Work() {
  Publish_Entries();
  Drop_Pending_Input();
  Log().Show_Everything();
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
  // The rows of a list move while entries wait to be published.
  if (List_Of(control) != nullptr) return Picked[Tab(control)];
  return From_Qt(static_cast<QLineEdit&>(Widget(control)).text());
}

void Qt_Window::Write_Log(Text_View text) {
  Log().Write(text);
}

void Qt_Window::Append_Log(Text_View text) {
  Log().Append(text);
  if (!Gate.Working()) Log().Show_Everything();
}

bool Qt_Window::Read_Value(Control option) const {
  return static_cast<QRadioButton&>(Widget(option)).isChecked();
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
  model.Publish();
  for (const Control_Row& row : Control_Table) {
    QComboBox* list = List_Of(row.Id);
    if (list == nullptr || list->model() != &model) continue;
    const Text& entry = Picked[Tab(row.Id)];
    list->setCurrentIndex(entry.empty() ? -1 : model.Row_Of_Entry(entry));
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
  box.setIcon((style & Style_Question) != 0 ? QMessageBox::Question : QMessageBox::Critical);
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
  // Or it would begin where the last one ended.
  dialog.setDirectory(QDir::currentPath());
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  if (dialog.exec() == QDialog::Accepted)
    Chosen_File_Name = From_Qt(dialog.selectedFiles().value(0));
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
