#include "platform/qt/context_menu.h"

#include <utility>

#include "platform/qt/qt_text.h"
#include "window/form_menu.h"

namespace rivelt {

Context_Menu::Context_Menu(Event_Gate& gate, std::function<void(const Text& time)> restore,
                           QWidget& form)
    : QMenu(&form),
      Gate(gate),
      Whole_Route(addAction(To_Qt(Whole_Route_Caption))),
      Backups(addMenu(To_Qt(Restore_Caption))) {
  Whole_Route->setCheckable(true);
  connect(this, &QMenu::aboutToShow, this, &Context_Menu::Refresh);
  connect(Whole_Route, &QAction::triggered, this, [this] { Gate.Toggle_Whole_Route(); });
  connect(Backups, &QMenu::triggered, this, [restore = std::move(restore)](const QAction* backup) {
    restore(From_Qt(backup->text()));
  });
  form.setContextMenuPolicy(Qt::CustomContextMenu);
  connect(&form, &QWidget::customContextMenuRequested, this,
          [this, &form](const QPoint& place) { popup(form.mapToGlobal(place)); });
}

void Context_Menu::Refresh() {
  Whole_Route->setEnabled(Gate.Menu_Enabled());
  Whole_Route->setChecked(Gate.Whole_Route());
  Backups->clear();
  for (const Text& time : Gate.Restorable()) Backups->addAction(To_Qt(time));
  Backups->menuAction()->setEnabled(!Backups->isEmpty());
}

}  // namespace rivelt
