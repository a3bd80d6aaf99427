// The entries of a drop-down list, in sorted order whatever the order of adding them.

#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "text/letter_case.h"
#include "text/text.h"

namespace rivelt {

// In the order of names, but " -delete-" is first. Adding n entries and then reading costs n log n
// in all.
class Sorted_List {
 public:
  void Add(Text_View entry);
  void Clear() { Entries.clear(); }

  std::size_t Count() const { return Entries.size(); }

  // By its row, counted from 0. The reference holds until the next Add.
  const Text& Entry(std::size_t row) const;

  // The first row that holds exactly this entry.
  std::optional<std::size_t> Find(Text_View entry) const;

 private:
  void Sort() const;

  mutable std::vector<Name_Key> Entries;
  mutable bool Is_Sorted = true;
};

}  // namespace rivelt
