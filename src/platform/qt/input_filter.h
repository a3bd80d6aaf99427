// Keeps the user's input away from what must not get it.

#pragma once

#include <QObject>
#include <functional>

class QAbstractButton;
class QShortcut;
class QWidget;

namespace rivelt {

// An event filter for the whole application. While input is dropped, only what changes nothing
// passes: reading the log, and the wish to quit. Dialogs that wait for an answer take all
// input. Esc belongs to an open list or menu alone.
class Input_Filter : public QObject {
 public:
  struct Passing {
    QWidget* Form;
    QWidget* Log;
    QAbstractButton* Quit;
    QShortcut* Quit_Key;
  };

  Input_Filter(const Passing& passing, std::function<bool()> is_dropping);

  bool eventFilter(QObject* target, QEvent* event) override;

 private:
  bool Passes(QObject* target, QEvent* event) const;
  QWidget* Receiver(QObject* target, QEvent* event) const;

  Passing Let_Through;
  std::function<bool()> Is_Dropping;
};

}  // namespace rivelt
