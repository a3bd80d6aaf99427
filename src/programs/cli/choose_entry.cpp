#include "programs/cli/choose_entry.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <set>
#include <utility>
#include <vector>

#include "text/letter_case.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

constexpr std::size_t Closest_Count = 3;

// The number of units to insert, remove or exchange to make one text of the other.
std::size_t Edit_Distance(Text_View first, Text_View second) {
  std::vector<std::size_t> row(second.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < first.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < second.size(); ++j) {
      const std::size_t exchanged = diagonal + (first[i] == second[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({exchanged, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

}  // namespace

std::optional<Text> Choose_Entry(const Sorted_List& list, Text_View wanted) {
  if (list.Find(wanted)) return Text(wanted);
  const Text folded = Fold_Case(wanted);
  std::set<Text> alike;
  for (std::size_t row = 0; row < list.Count(); ++row) {
    if (Fold_Case(list.Entry(row)) == folded) alike.insert(list.Entry(row));
  }
  if (alike.size() != 1) return std::nullopt;
  return *alike.begin();
}

std::string Closest_Entries(const Sorted_List& list, Text_View wanted) {
  const Text folded = Fold_Case(wanted);
  std::vector<std::pair<std::size_t, std::size_t>> by_distance;
  for (std::size_t row = 0; row < list.Count(); ++row) {
    by_distance.emplace_back(Edit_Distance(Fold_Case(list.Entry(row)), folded), row);
  }
  const std::size_t shown = std::min(Closest_Count, by_distance.size());
  std::partial_sort(by_distance.begin(), by_distance.begin() + static_cast<std::ptrdiff_t>(shown),
                    by_distance.end());
  std::string lines;
  for (std::size_t i = 0; i < shown; ++i) {
    lines += "  " + To_Utf8(list.Entry(by_distance[i].second)) + "\n";
  }
  return lines;
}

}  // namespace rivelt
