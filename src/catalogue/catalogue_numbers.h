#pragma once

#include "text/number_set.h"
#include "text/text.h"

namespace rivelt {

// Every id that the global catalogue declares, those of duplicate and nameless shapes included.
struct Catalogue_Numbers {
  Number_Set Sections;
  Number_Set Shapes;
};

// Reads the ids after each "TrackSection (" and "TrackShape (" of the catalogue's text, but for
// those in its comment blocks. Failure: as for Without_Comments.
Catalogue_Numbers Read_Catalogue_Numbers(Text_View text);

}  // namespace rivelt
