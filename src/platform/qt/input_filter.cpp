#include "platform/qt/input_filter.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QShortcut>
#include <QWidget>
#include <algorithm>
#include <array>
#include <utility>

namespace rivelt {
namespace {

bool Is_Input(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
      return true;
    default:
      return false;
  }
}

bool Is_Key(const QEvent& event) {
  return event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease;
}

// Esc as it is offered to the widgets before it counts as a shortcut. A list that is open would
// close at the offer and leave the key itself to the window.
bool Is_Offer_Of_Escape(const QEvent& event) {
  return event.type() == QEvent::ShortcutOverride &&
         static_cast<const QKeyEvent&>(event).matches(QKeySequence::Cancel);
}

bool Is_Mouse(const QEvent& event) {
  return dynamic_cast<const QSinglePointEvent*>(&event) != nullptr;
}

bool Reads_The_Log(const QKeyEvent& key) {
  constexpr std::array reading_keys{Qt::Key_Up,     Qt::Key_Down,     Qt::Key_Left, Qt::Key_Right,
                                    Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End};
  return key.matches(QKeySequence::Copy) || key.matches(QKeySequence::SelectAll) ||
         std::ranges::find(reading_keys, key.key()) != reading_keys.end();
}

}  // namespace

Input_Filter::Input_Filter(const Passing& passing, std::function<bool()> is_dropping)
    : Let_Through(passing), Is_Dropping(std::move(is_dropping)) {
  qApp->installEventFilter(this);
}

bool Input_Filter::eventFilter(QObject* target, QEvent* event) {
  if (QApplication::activePopupWidget() != nullptr && Is_Offer_Of_Escape(*event)) {
    event->accept();
    return true;
  }
  if (!Is_Input(event->type()) || !Is_Dropping()) return false;
  return QApplication::activeModalWidget() == nullptr && !Passes(target, event);
}

bool Input_Filter::Passes(QObject* target, QEvent* event) const {
  if (event->type() == QEvent::Shortcut) {
    return target == Let_Through.Quit || target == Let_Through.Quit_Key;
  }
  const QWidget* receiver = Receiver(target, event);
  if (receiver == nullptr) return false;
  if (receiver == Let_Through.Quit) {
    return Is_Mouse(*event) ||
           (Is_Key(*event) && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space);
  }
  if (receiver != Let_Through.Log && !Let_Through.Log->isAncestorOf(receiver)) return false;
  return Is_Mouse(*event) || (Is_Key(*event) && Reads_The_Log(*static_cast<QKeyEvent*>(event)));
}

// An event comes to the native window first and from there to a widget. It is dropped at the window
// already: on the way to the widget it would move the focus.
QWidget* Input_Filter::Receiver(QObject* target, QEvent* event) const {
  if (!target->isWindowType()) return qobject_cast<QWidget*>(target);
  if (Is_Mouse(*event)) {
    const QPointF place = static_cast<QSinglePointEvent*>(event)->globalPosition();
    return Let_Through.Form->childAt(Let_Through.Form->mapFromGlobal(place.toPoint()));
  }
  return Is_Key(*event) ? QApplication::focusWidget() : nullptr;
}

}  // namespace rivelt
