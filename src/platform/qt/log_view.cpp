#include "platform/qt/log_view.h"

#include <QScrollBar>
#include <QTextCursor>

#include "platform/qt/qt_text.h"

namespace rivelt {
namespace {

// In code units: some hundred lines for a repaint, and what takes a few milliseconds.
constexpr std::size_t Most_News = std::size_t{16} * 1024;
constexpr std::size_t Most_Older_Lines = std::size_t{256} * 1024;

// A position behind a line end, at or behind this one.
std::size_t Line_Start(const Text& text, std::size_t position) {
  const std::size_t end = text.find(u'\n', position);
  return end == Text::npos ? text.size() : end + 1;
}

}  // namespace

Log_View::Log_View(QWidget* parent) : QPlainTextEdit(parent) {
  setReadOnly(true);
  setUndoRedoEnabled(false);
  setTabChangesFocus(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  connect(&Older_Lines, &QTimer::timeout, this, [this] { Show_Older_Lines(); });
}

void Log_View::Write(Text_View text) {
  Older_Lines.stop();
  Whole = text;
  Shown_From = Shown_To = 0;
  clear();
  Show_News();
}

bool Log_View::Newest_In_View() const {
  return verticalScrollBar()->value() == verticalScrollBar()->maximum();
}

void Log_View::Show_News() {
  const bool newest_in_view = Newest_In_View();
  if (newest_in_view && Whole.size() - Shown_To > Most_News) {
    Start_From_Line_Behind(Whole.size() - Most_News);
  }
  Text_View news = Text_View(Whole).substr(Shown_To);
  // A carriage return waits for its line feed: apart they would be two line ends.
  if (news.ends_with(u'\r')) news.remove_suffix(1);
  if (news.empty()) return;
  QTextCursor end(document());
  end.movePosition(QTextCursor::End);
  end.insertText(To_Qt(news));
  Shown_To += news.size();
  if (newest_in_view) verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void Log_View::Start_From_Line_Behind(std::size_t position) {
  const std::size_t start = Line_Start(Whole, position);
  if (start == Whole.size()) return;
  clear();
  Shown_From = Shown_To = start;
}

void Log_View::Show_Everything() {
  Show_News();
  if (Shown_From > 0) Older_Lines.start();
}

void Log_View::Show_Older_Lines() {
  const std::size_t back = Shown_From > Most_Older_Lines ? Shown_From - Most_Older_Lines : 0;
  // A line of more than that is shown with all that is in front of it.
  std::size_t start = back == 0 ? 0 : Line_Start(Whole, back);
  if (start >= Shown_From) start = 0;
  const Text_View older = Text_View(Whole).substr(start, Shown_From - start);
  const bool newest_in_view = Newest_In_View();
  const int place = verticalScrollBar()->value();
  const int lines_before = blockCount();
  QTextCursor(document()).insertText(To_Qt(older));
  Shown_From = start;
  verticalScrollBar()->setValue(newest_in_view ? verticalScrollBar()->maximum()
                                               : place + blockCount() - lines_before);
  if (Shown_From == 0) Older_Lines.stop();
}

}  // namespace rivelt
