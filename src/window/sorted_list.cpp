#include "window/sorted_list.h"

#include <algorithm>

#include "window/controls.h"

namespace rivelt {
namespace {

bool Comes_First(const Name_Key& first, const Name_Key& second) {
  const bool is_delete = first.Name == Delete_Entry;
  const bool other_is_delete = second.Name == Delete_Entry;
  return is_delete != other_is_delete ? is_delete : first < second;
}

}  // namespace

void Sorted_List::Add(Text_View entry) {
  Entries.push_back(Key_Of(entry));
  Is_Sorted = false;
}

const Text& Sorted_List::Entry(std::size_t row) const {
  Sort();
  return Entries[row].Name;
}

std::optional<std::size_t> Sorted_List::Find(Text_View entry) const {
  Sort();
  const auto found = std::ranges::lower_bound(Entries, Key_Of(entry), Comes_First);
  if (found == Entries.end() || found->Name != entry) return std::nullopt;
  return static_cast<std::size_t>(found - Entries.begin());
}

void Sorted_List::Sort() const {
  if (!Is_Sorted) std::ranges::sort(Entries, Comes_First);
  Is_Sorted = true;
}

}  // namespace rivelt
