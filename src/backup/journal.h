// The journal of an update as a text: what was in the route and what was to be put there.

#pragma once

#include <optional>
#include <vector>

#include "backup/content.h"
#include "text/text.h"

namespace rivelt {

// One file of an update. A place is a path below the route's folder, "World\w-1.w"; the places of
// the original and of the new file may differ in letter case.
struct Journal_File {
  Text Original_Place;              // where it was, and is kept below the update's own folder
  std::optional<Content> Original;  // nothing if there was no file
  Text New_Place;
  std::optional<Content> New;        // nothing if the file is only removed
  Text Source;                       // where the new file waits, a path below Quenby: "tmp\w-1.w"
  bool Changed_Since_Check = false;  // the original was no longer what the check had read
  bool Has_Twin = false;  // the route had a second file whose name differs in letter case only

  bool operator==(const Journal_File&) const = default;
};

using Journal = std::vector<Journal_File>;

// Failure: a path with a tab or a line end in it, which the journal could not give back.
Text Journal_Text(const Journal& journal);

// Nothing if the text is not a complete journal.
std::optional<Journal> Read_Journal(Text_View text);

}  // namespace rivelt
