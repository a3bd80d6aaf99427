#pragma once

#include <vector>

#include "programs/sample/random_source.h"
#include "programs/sample/shape.h"
#include "text/text.h"

namespace rivelt::sample {

// The number of track shapes that the catalogue reserves, and of track sections as well.
Long Reserved_Count(const std::vector<Shape>& shapes);

// The text of Global\tsection.dat.
Text Global_Catalogue(const std::vector<Shape>& shapes, Random_Source random);

}  // namespace rivelt::sample
