#include "window/sorted_list.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "text/letter_case.h"
#include "window/controls.h"

namespace rivelt {

bool Sorted_List::Sort_Entry::operator<(const Sort_Entry& other) const {
  const bool behind_delete = Shown != Delete_Entry;
  const bool other_behind_delete = other.Shown != Delete_Entry;
  return std::tie(behind_delete, Folded, Shown) <
         std::tie(other_behind_delete, other.Folded, other.Shown);
}

void Sorted_List::Add(Text_View entry) {
  Entries.push_back({Fold_Case(entry), Text(entry)});
}

const Text& Sorted_List::Entry(std::size_t row) const {
  Sort();
  return Entries[row].Shown;
}

std::optional<std::size_t> Sorted_List::Find(Text_View entry) const {
  Sort();
  const Sort_Entry wanted{Fold_Case(entry), Text(entry)};
  const auto found = std::lower_bound(Entries.begin(), Entries.end(), wanted);
  if (found == Entries.end() || found->Shown != entry) return std::nullopt;
  return static_cast<std::size_t>(found - Entries.begin());
}

void Sorted_List::Sort() const {
  if (Sorted_Count == Entries.size()) return;
  const auto added = Entries.begin() + static_cast<std::ptrdiff_t>(Sorted_Count);
  std::sort(added, Entries.end());
  std::inplace_merge(Entries.begin(), added, Entries.end());
  Sorted_Count = Entries.size();
}

}  // namespace rivelt
