// The entries of a drop-down list, in sorted order whatever the order of adding them.

#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "text/text.h"

namespace rivelt {

// Letter case does not count in the order; between equals the code units decide; " -delete-" is
// first. Adding n entries and then reading costs n log n in all.
class Sorted_List {
 public:
  void Add(Text_View entry);

  std::size_t Count() const { return Entries.size(); }

  // By its row, counted from 0. The reference holds until the next Add.
  const Text& Entry(std::size_t row) const;

  // The first row that holds exactly this entry.
  std::optional<std::size_t> Find(Text_View entry) const;

 private:
  // An entry beside the form by which it sorts.
  struct Sort_Entry {
    Text Folded;
    Text Shown;
    bool operator<(const Sort_Entry& other) const;
  };

  void Sort() const;

  mutable std::vector<Sort_Entry> Entries;  // sorted up to Sorted_Count, then as added
  mutable std::size_t Sorted_Count = 0;
};

}  // namespace rivelt
