#include "platform/qt/menu_bar.h"

#include "platform/qt/qt_text.h"

namespace rivelt {
namespace {

void Refresh(QAction& action, Menu_Entry entry, const Event_Gate& gate) {
  action.setEnabled(gate.Can_Choose(entry));
  action.setChecked(gate.Whole_Route());  // of the one that can be
  if (QMenu* choices = action.menu()) {
    choices->clear();
    for (const Text& backup : gate.Restorable()) choices->addAction(To_Qt(backup));
  }
}

}  // namespace

QMenuBar* Build_Menu_Bar(const Event_Gate& gate, const Choose_Entry& choose, QWidget& form) {
  auto* bar = new QMenuBar(&form);
  bar->setNativeMenuBar(false);  // it is to be seen, on every desktop
  QMenu* menu = bar->addMenu(To_Qt(Menu_Caption));
  for (const Menu_Row& row : Menu_Table) {
    if (row.After_Line) menu->addSeparator();
    const QString caption = To_Qt(row.Caption);
    const bool has_choices = row.Kind == Menu_Kind::Sub_Menu;
    QAction* action = has_choices ? menu->addMenu(caption)->menuAction() : menu->addAction(caption);
    action->setCheckable(row.Kind == Menu_Kind::Check_Mark);
    QObject::connect(menu, &QMenu::aboutToShow, action,
                     [&gate, action, entry = row.Id] { Refresh(*action, entry, gate); });
    if (has_choices) {
      QObject::connect(action->menu(), &QMenu::triggered,
                       [choose, entry = row.Id](const QAction* choice) {
                         choose(entry, From_Qt(choice->text()));
                       });
    } else {
      QObject::connect(action, &QAction::triggered,
                       [choose, entry = row.Id] { choose(entry, Text()); });
    }
  }
  return bar;
}

}  // namespace rivelt
