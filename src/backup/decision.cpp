#include "backup/decision.h"

#include <algorithm>

namespace rivelt {

Outcome Decide(const std::vector<Finding>& files) {
  const auto has_moved = [](const Finding& file) {
    return !file.Waits && (file.Is_New() || file.Has_Come());
  };
  const auto has = [&](Found found) {
    return std::ranges::any_of(files, [&](const Finding& file) { return file.What == found; });
  };
  if (std::ranges::all_of(files, has_moved)) return Outcome::Finished;
  if (has(Found::New) || has(Found::Gone)) return Outcome::Rolled_Back;
  if (std::ranges::none_of(files, &Finding::Has_Come)) return Outcome::Untouched;
  return has(Found::Original) ? Outcome::Rolled_Back : Outcome::Left;
}

}  // namespace rivelt
