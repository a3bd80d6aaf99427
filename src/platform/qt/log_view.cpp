#include "platform/qt/log_view.h"

#include <QScrollBar>
#include <QTextCursor>

#include "platform/qt/qt_text.h"

namespace rivelt {

Log_View::Log_View(QWidget* parent) : QPlainTextEdit(parent) {
  setReadOnly(true);
  setUndoRedoEnabled(false);
  setTabChangesFocus(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void Log_View::Write(Text_View text) {
  Whole = text;
  Shown = 0;
  clear();
  Show_News();
}

void Log_View::Show_News() {
  Text_View news = Text_View(Whole).substr(Shown);
  // A carriage return waits for its line feed: apart they would be two line ends.
  if (news.ends_with(u'\r')) news.remove_suffix(1);
  if (news.empty()) return;
  QScrollBar& bar = *verticalScrollBar();
  const bool newest_in_view = bar.value() == bar.maximum();
  QTextCursor end(document());
  end.movePosition(QTextCursor::End);
  end.insertText(To_Qt(news));
  Shown += news.size();
  if (newest_in_view) bar.setValue(bar.maximum());
}

}  // namespace rivelt
