#pragma once

#include <vector>

#include "text/log_line.h"
#include "text/number_set.h"
#include "text/text.h"

namespace rivelt {

// The ids that a route's tsection.dat declares, before they move.
struct Own_Numbers {
  Number_Set Sections;
  Number_Set Shapes;
};

struct Rebased_Tsection {
  Text Output;             // the whole new text
  Long Section_Delta = 0;  // what was added to every section id
  Long Shape_Delta = 0;    // what was added to every shape id
  Own_Numbers Own;
  std::vector<Double> Path_Sections;  // the section ids that the shapes refer to, before they move

  bool Moves() const { return Section_Delta != 0 || Shape_Delta != 0; }

  // Of the own numbers those whose kind moves.
  Own_Numbers Moving() const {
    return {Section_Delta == 0 ? Number_Set() : Own.Sections,
            Shape_Delta == 0 ? Number_Set() : Own.Shapes};
  }
};

// Moves the ids of a route's tsection.dat so that the first section id becomes reserved_sections
// and the first shape id reserved_shapes. Everything else is carried over. Logs what changed and
// the number of dynamic tracks. Failure: a text that is not of the file's form.
Rebased_Tsection Rebase_Tsection(Text_View text, Long reserved_sections, Long reserved_shapes,
                                 const Log_Line& log);

}  // namespace rivelt
