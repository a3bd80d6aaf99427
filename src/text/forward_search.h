// A search for one target from starts that only move forward.

#pragma once

#include <cstddef>

#include "text/primitives.h"

namespace rivelt {

// Finds a target in the rest of a text again and again while the rest is cut from the front. An
// answer holds until the rest has passed it, so no stretch of the text is searched twice.
class Forward_Search {
 public:
  // Both texts must outlive the search.
  Forward_Search(Text_View text, Text_View target) : Whole(text), Target(target) {}

  // As Find_Text(1, rest, target). The rest is an ending of the text, no longer than the one
  // before.
  Position Find(Text_View rest) {
    const std::size_t cut = Whole.size() - rest.size();
    if (Hit <= cut && Hit != Nowhere) {
      const Position found = Find_Text(1, rest, Target);
      Hit = found == 0 ? Nowhere : cut + static_cast<std::size_t>(found);
    }
    return Hit == Nowhere ? 0 : static_cast<Position>(Hit - cut);
  }

 private:
  static constexpr std::size_t Nowhere = Text_View::npos;

  Text_View Whole;
  Text_View Target;
  std::size_t Hit = 0;  // position in the whole text; 0 before the first search
};

}  // namespace rivelt
