// Texts of the program and of Qt: the same code units on both sides, so nothing is lost.

#pragma once

#include <QString>
#include <QStringView>

#include "text/text.h"

namespace rivelt {

inline QString To_Qt(Text_View text) {
  return QStringView(text.data(), static_cast<qsizetype>(text.size())).toString();
}

inline Text From_Qt(QStringView text) {
  return Text(text.utf16(), static_cast<std::size_t>(text.size()));
}

}  // namespace rivelt
