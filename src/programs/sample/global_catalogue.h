#pragma once

#include <vector>

#include "programs/sample/random_source.h"
#include "text/text.h"

namespace rivelt::sample {

struct Shape {
  enum class Record {
    Plain,
    Name_Comes_Late,  // after another bracket, so that the name counts for nothing
    Duplicate,        // of an earlier shape, its name in other letter case
  };

  Long Id = 0;
  Text File_Name;
  Record Kind = Record::Plain;

  bool Is_Listed() const { return Kind == Record::Plain; }
  bool Is_Junction() const { return Id % 20 == 3; }  // the points of a single track
  std::vector<Long> Sections() const;                // one for each path through the shape
};

// The first shape is A1t100mStrt.s. Ids count from 1.
std::vector<Shape> Invent_Shapes(Long count);

// The number of track shapes that the catalogue reserves, and of track sections as well.
Long Reserved_Count(const std::vector<Shape>& shapes);

// The text of Global\tsection.dat.
Text Global_Catalogue(const std::vector<Shape>& shapes, Random_Source random);

}  // namespace rivelt::sample
