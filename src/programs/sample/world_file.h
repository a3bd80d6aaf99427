#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "programs/sample/dynamic_track.h"
#include "programs/sample/random_source.h"
#include "programs/sample/shape.h"
#include "text/text.h"

namespace rivelt::sample {

// The text of a world file with so many track objects. Most have the right id, one in forty a wrong
// one, and one in a hundred a shape that the catalogue does not list. One of each, and a dynamic
// track, stand in every file of four objects or more that has_every_kind.
Text World_Text(const std::vector<Shape>& shapes, const std::vector<Dynamic_Track>& tracks,
                std::int64_t objects, bool has_every_kind, Random_Source random);

// A file in the form that the program cannot read.
std::string Binary_World(Random_Source random);

}  // namespace rivelt::sample
