#include "platform/qt/entry_model.h"

#include "platform/qt/qt_text.h"

namespace rivelt {

void Entry_Model::Add(Text_View entry) {
  List.Add(entry);
  if (static_cast<qsizetype>(entry.size()) > Longest.size()) Longest = To_Qt(entry);
}

void Entry_Model::Clear() {
  List.Clear();
  Longest.clear();
  Publish();
}

void Entry_Model::Publish() {
  beginResetModel();
  Published_Count = List.Count();
  endResetModel();
}

int Entry_Model::Row_Of_Entry(Text_View entry) const {
  const auto row = List.Find(entry);
  return row ? static_cast<int>(*row) : -1;
}

int Entry_Model::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(Published_Count);
}

QVariant Entry_Model::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole)) return {};
  return To_Qt(List.Entry(static_cast<std::size_t>(index.row())));
}

}  // namespace rivelt
