#pragma once

#include <set>

#include "text/text.h"

namespace rivelt {

// What the last full run of Do_Check has found beside what it has staged and logged.
struct Check_Findings {
  bool Stays_Behind() const { return Numbers_Behind != 0 || Objects_Behind != 0; }

  // Names in sets are folded.
  std::set<Text> World_Files;
  Long Binary_Files = 0;  // of these
  Long To_Update = 0;     // files of all kinds

  // What the track object pass says, if it ran.
  bool Objects_Checked = false;
  Long Corrected = 0;  // objects that get another number
  Long Left = 0;       // that cannot be read
  Long Unknown_Objects = 0;
  std::set<Text> Unknown_Shapes;
  std::set<Text> Transformed_Shapes;  // the old ones

  // Without the whole route: the route's own numbers that do not move with the others.
  Long Numbers_Behind = 0;  // in databases
  Long Objects_Behind = 0;

  // With it: as in Renumbered_File.
  Long Taken = 0;
  Long Shared = 0;
};

}  // namespace rivelt
