// The track of a route's own: what its local tsection.dat lists and its world files refer to.

#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "programs/sample/random_source.h"
#include "text/text.h"

namespace rivelt::sample {

// One of the five sections of a dynamic track, straight and curved by turns.
struct Dynamic_Section {
  Long Id = 0;  // 0 where the place is unused
  Text Size;    // the two numbers after the id
};

struct Dynamic_Track {
  Long Shape_Id = 0;
  std::array<Dynamic_Section, 5> Sections;

  std::vector<Long> Section_Ids() const;  // of the places in use: at least one
};

// Tracks whose ids count on from the two given ones.
std::vector<Dynamic_Track> Invent_Dynamic_Tracks(std::size_t count, Long first_section,
                                                 Long first_shape, Random_Source random);

// The text of the local tsection.dat.
Text Local_Catalogue(const std::vector<Dynamic_Track>& tracks);

}  // namespace rivelt::sample
