// The passes that move a route's own numbers where nothing else does: in its track objects and in
// its databases. Only the digits of what moves change.

#pragma once

#include <functional>

#include "convert/rebase_tsection.h"
#include "convert/world_passes.h"
#include "text/log_line.h"
#include "text/text.h"

namespace rivelt {

// Over a world file, after the dynamic track pass and before the track object pass: adds
// shape_delta to the number of each track object that is one of the route's own shapes, unless
// shape_id, which gives the catalogue's id for a name or -1, gives its name that very number.
// Counts those objects and logs how many, if there are any. An object that cannot be read inside
// its brackets is left as it is. Failure: a number beyond the range of a Double, or, in a text that
// has an own number after any "SectionIdx", an object that cannot be read and has no end.
Passed_World Rebase_Own_Shapes(Text text, const Own_Numbers& own, Long shape_delta,
                               const std::function<Long(Text_View)>& shape_id, const Log_Line& log);

// The track objects that Rebase_Own_Shapes would move, with the same failures.
Long Count_Own_Shapes(Text_View text, const Own_Numbers& own,
                      const std::function<Long(Text_View)>& shape_id);

struct Rebased_Database {
  Text Output;             // the whole new text
  Long Section_Count = 0;  // section ids of the route's own
  Long Shape_Count = 0;    // shape ids of the route's own, those of junctions included
};

// Over a .tdb or .rdb: adds section_delta to the route's own section ids and shape_delta to its own
// shape ids. Failure: a text that is not of the form that Read_Track_Database reads.
Rebased_Database Rebase_Track_Database(Text text, const Own_Numbers& own, Long section_delta,
                                       Long shape_delta);

// The numbers that Rebase_Track_Database would move, with the same failures.
Long Count_Own_Numbers(Text_View text, const Own_Numbers& own);

}  // namespace rivelt
