// The passes over the text of a world file that every route needs.

#pragma once

#include <functional>
#include <optional>

#include "convert/track_object.h"
#include "text/log_line.h"
#include "text/primitives.h"
#include "text/text.h"

namespace rivelt {

// By its name.
inline bool Is_World_File(Text_View name) {
  return Upper_Text(Right_Text(name, 2)) == u".W";
}

// The one test of a world file's form: a binary one does not pass it.
inline bool Is_World_Text(Text_View text) {
  return Find_Text(1, text, u"Tr_Worldfile") != 0;
}

struct Passed_World {
  std::optional<Text> Output;  // the whole new text, if it is another one
  Long Count = 0;              // dynamic tracks handled, or track objects changed or removed
  Long Corrected = 0;          // track objects that got another number
  Long Left = 0;               // track objects that cannot be read
};

// Adds section_delta to the five section ids of every dynamic track, but not to the reserved value
// 4294967295, and shape_delta to its shape reference. A section id of a single digit stays as it
// is, and so does a negative shape reference in the same track. Logs the number of dynamic tracks.
// Failure: a dynamic track that is not of the form, or reaches into the next one.
Passed_World Rebase_Dyntracks(Text_View text, Long section_delta, Long shape_delta,
                              const Log_Line& log);

// What the track object pass asks about a shape file name.
struct Shape_Tables {
  std::function<Text(Text_View)> Map_Shape;  // the name to use, or " -delete-" to remove the object
  Id_Of_Shape Shape_Id;
};

// Gives every track object the name that the tables map its name to and the id that belongs to it,
// or removes it. One that cannot be read inside its brackets is left as it is. Logs what changed,
// what was left and the number of changes. Failure: a track object that cannot be read and has no
// end, or one that lacks what the rest of the text lacks as well.
Passed_World Check_Track_Objects(Text_View text, const Shape_Tables& tables, const Log_Line& log);

}  // namespace rivelt
