// The invented shapes of the global catalogue.

#pragma once

#include <vector>

#include "text/text.h"

namespace rivelt::sample {

struct Shape {
  enum class Record {
    Plain,
    Name_Comes_Late,  // behind another bracket, so that the name counts for nothing
    Duplicate,        // of a shape in front of it, its name in other letter case
  };

  Long Id = 0;
  Text File_Name;
  Record Kind = Record::Plain;

  bool Is_Listed() const { return Kind == Record::Plain; }
};

// The first shape is A1t100mStrt.s. Ids count from 1.
std::vector<Shape> Invent_Shapes(Long count);

}  // namespace rivelt::sample
