// The global catalogue, read once.

#pragma once

#include <functional>
#include <optional>

#include "text/number_set.h"
#include "text/text.h"

namespace rivelt {

// The ids that a file declares.
struct Declared_Ids {
  Number_Set Sections;
  Number_Set Shapes;
};

struct Catalogue {
  Long Reserved_Sections = 0;
  Long Reserved_Shapes = 0;
  Declared_Ids Declared;  // those of duplicate and nameless shapes included
};

// The text between "Build" with one more character and the next ")"; nothing without a "Build".
// Failure: there is no room for it.
std::optional<Text_View> Catalogue_Version(Text_View text);

// Hands the id and file name of each shape record, in the order of the file, to add_shape. A record
// whose "FileName" is not in its first bracket is skipped, and so is what is in a comment block.
// Failure: a comment block that is never closed, no "TrackSections" with "TrackShapes" after it, a
// count or an id that does not fit a Long, a name without an end; or surplus brackets that make a
// text grow beyond Longest_Result.
Catalogue Read_Catalogue(Text_View text,
                         const std::function<void(Long id, Text_View name)>& add_shape);

}  // namespace rivelt
