// The message log on the screen: to be read, scrolled, selected and copied.

#pragma once

#include <QPlainTextEdit>
#include <QTimer>

#include "text/text.h"

namespace rivelt {

class Log_View : public QPlainTextEdit {
 public:
  explicit Log_View(QWidget* parent);

  void Write(Text_View text);

  // The addition is on the screen from the next Show_News on.
  void Append(Text_View text) { Whole += text; }

  // The newest line comes into view, unless the user has scrolled away from it. If more has come
  // than a person could read, only its end is shown for now: to put all of it into the widget would
  // take longer than the work that it reports.
  void Show_News();

  // The work has ended: shows the news, and soon the lines that were left out.
  void Show_Everything();

  bool Shows_Everything() const { return Shown_From == 0 && Shown_To == Whole.size(); }

  const Text& Content() const { return Whole; }

 private:
  bool Newest_In_View() const;
  void Start_From_Line_Behind(std::size_t position);
  void Show_Older_Lines();

  Text Whole;
  // What of it is in the widget.
  std::size_t Shown_From = 0;
  std::size_t Shown_To = 0;
  QTimer Older_Lines;
};

}  // namespace rivelt
