#pragma once

#include <array>
#include <cstddef>

#include "window/controls.h"

namespace rivelt {

// The entries of the window's lists, kept once for all lists with the same source.
template <class Entries>
class List_Entries {
 public:
  List_Entries() { Reset(); }

  // Back to the entries at the start.
  void Reset() {
    for (Entries& entries : All) entries.Clear();
    All[static_cast<std::size_t>(List::Tracks)].Add(Delete_Entry);
  }

  // As Window::Add_Item: what is added to the first of lists that share a source is in all of them.
  void Add(Control list, Text_View entry) {
    const auto filled_alike = [&](const Control_Row& row) {
      return row.Filled_By == Row_Of(list).Filled_By;
    };
    if (list == First_Control(filled_alike)) Of(list).Add(entry);
  }

  Entries& Of(Control list) { return All[static_cast<std::size_t>(Row_Of(list).Filled_By)]; }
  const Entries& Of(Control list) const {
    return All[static_cast<std::size_t>(Row_Of(list).Filled_By)];
  }

  auto begin() { return All.begin(); }
  auto end() { return All.end(); }

 private:
  std::array<Entries, List_Count> All;
};

}  // namespace rivelt
