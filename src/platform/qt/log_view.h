// The message log on the screen: to be read, scrolled, selected and copied.

#pragma once

#include <QPlainTextEdit>

#include "text/text.h"

namespace rivelt {

class Log_View : public QPlainTextEdit {
 public:
  explicit Log_View(QWidget* parent);

  void Write(Text_View text);

  // The addition is on the screen from the next Show_News on.
  void Append(Text_View text) { Whole += text; }

  // The newest line comes into view, unless the user has scrolled away from it.
  void Show_News();

  const Text& Content() const { return Whole; }

 private:
  Text Whole;
  std::size_t Shown = 0;  // code units of it that are in the widget
};

}  // namespace rivelt
