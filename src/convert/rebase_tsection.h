#pragma once

#include <optional>
#include <vector>

#include "catalogue/catalogue.h"
#include "text/log_line.h"
#include "text/text.h"

namespace rivelt {

struct Rebased_Tsection {
  std::optional<Text> Output;         // the whole new text, if it is another one
  Long Section_Delta = 0;             // what was added to every section id
  Long Shape_Delta = 0;               // what was added to every shape id
  Declared_Ids Own;                   // before they move
  std::vector<Double> Path_Sections;  // the section ids that the shapes refer to, before they move
};

// Moves the ids of a route's tsection.dat so that the first section id becomes reserved_sections
// and the first shape id reserved_shapes. Everything else is carried over. Logs what changed and
// the number of dynamic tracks. Failure: a text that is not of the file's form.
Rebased_Tsection Rebase_Tsection(Text_View text, Long reserved_sections, Long reserved_shapes,
                                 const Log_Line& log);

}  // namespace rivelt
