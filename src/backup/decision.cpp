#include "backup/decision.h"

#include <algorithm>

namespace rivelt {

Outcome Decide(const std::vector<Found>& files, bool all_moved) {
  const auto has = [&](Found found) { return std::ranges::count(files, found) > 0; };
  if (!has(Found::New) && !has(Found::Missing)) return Outcome::Untouched;
  const bool all_there = !has(Found::Original) && !has(Found::Missing) && !has(Found::Not_Moved);
  const bool all_new = all_there && !has(Found::Other);
  return all_new || (all_there && all_moved) ? Outcome::Finished : Outcome::Rolled_Back;
}

}  // namespace rivelt
