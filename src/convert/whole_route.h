// The passes that move a route's own numbers in its track objects and databases. Only the digits of
// a number that moves change. Without a conversion the same passes count how many stay behind.

#pragma once

#include <optional>

#include "convert/track_object.h"
#include "text/number_set.h"
#include "text/text.h"

namespace rivelt {

// The route's own ids of one kind, and by how much they move; none if they do not.
struct Moving_Ids {
  Moving_Ids() = default;
  Moving_Ids(const Number_Set& own, const Number_Set& of_catalogue, Long delta);

  Long Delta = 0;
  Number_Set Own;    // before they move
  Number_Set Taken;  // those that they come to and that nobody has declared so far
};

// Whether a pass makes a new text, or counts what would change.
enum class Purpose { Convert, Count };

struct Renumbered_File {
  std::optional<Text> Output;  // the whole new text, if it is another one and wanted
  Long Section_Count = 0;
  Long Shape_Count = 0;
  Long Taken_Count = 0;   // numbers that are among the taken ones
  Long Shared_Count = 0;  // track objects whose own number stays, as it is that of their name, too
};

// Over a world file, after the dynamic track pass and before the track object pass: moves the
// number of each track object that is one of the route's own shapes, unless the catalogue gives its
// name that very number. An object that cannot be read inside its brackets is left as it is.
// Failure: a number beyond the range of a Double, or, in a text that has an own or taken number
// after any "SectionIdx", an object that cannot be read and has no end.
Renumbered_File Rebase_Own_Shapes(Text_View text, const Moving_Ids& shapes,
                                  const Id_Of_Shape& shape_id, Purpose purpose = Purpose::Convert);

// Over a .tdb or .rdb: moves the section ids and shape ids, those of junctions included. Failure: a
// text that is not of the form that Read_Track_Database reads.
Renumbered_File Rebase_Track_Database(Text_View text, const Moving_Ids& sections,
                                      const Moving_Ids& shapes, Purpose purpose = Purpose::Convert);

}  // namespace rivelt
