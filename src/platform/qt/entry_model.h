// The entries of a drop-down list, as a model that several lists show at once.

#pragma once

#include <QAbstractListModel>

#include "text/text.h"
#include "window/sorted_list.h"

namespace rivelt {

class Entry_Model : public QAbstractListModel {
 public:
  // The lists show the entry from the next Publish on: telling them of every entry by itself would
  // make the start of the program wait for them.
  void Add(Text_View entry);

  void Clear();

  // Whether entries wait for Publish.
  bool Has_News() const { return Published_Count != List.Count(); }

  // Each list that shows the model then has to pick its entry again.
  void Publish();

  int Row_Of_Entry(Text_View entry) const;  // -1: there is none

  const QString& Longest_Entry() const { return Longest; }

  int rowCount(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  Sorted_List List;
  std::size_t Published_Count = 0;
  QString Longest;
};

}  // namespace rivelt
