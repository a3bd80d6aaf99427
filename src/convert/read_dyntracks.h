#pragma once

#include <functional>

#include "text/text.h"

namespace rivelt {

// The section id of a place in a dynamic track that has no section.
inline constexpr Double Unused_Section = 4294967295.0;

struct Dyntrack_Number {
  enum class Kind { Section, Shape };

  Kind Of = Kind::Section;
  Double Value = 0;
  Text_View Field;  // a view into the text: the number and the blanks that go with it
};

// Hands over the numbers of every dynamic track of a world file, in their order, and gives the
// count of the tracks. Left out are what an editor leaves in a broken track: a section id of a
// single digit, and a negative shape reference in the same track. Failure: a dynamic track that is
// not of the form, or reaches into the next one; some numbers may have been handed over by then.
Long Read_Dyntracks(Text_View text, const std::function<void(const Dyntrack_Number&)>& take);

}  // namespace rivelt
