// The journal of an update as a text: what was in the route and what takes its place.

#pragma once

#include <optional>
#include <vector>

#include "backup/content.h"
#include "text/text.h"

namespace rivelt {

// One file of an update.
struct Journal_File {
  Text Place;   // below the route's folder, "World\w-1.w", as the update spells it
  Text Source;  // where the new file waits, below Quenby: "tmp\w-1.w"
  std::optional<Content> Original;  // nothing if there was no file
  std::optional<Content> New;       // nothing if the file is only removed

  bool operator==(const Journal_File&) const = default;
};

struct Journal {
  Text Made_By;  // a word for a person: what kind of update it is
  std::vector<Journal_File> Files;

  bool operator==(const Journal&) const = default;
};

// Failure: a name with a tab or a line end in it, which the journal cannot hold.
Text Journal_Text(const Journal& journal);

// Nothing if the checksum in its last line does not fit the lines above. Failure: it does, but the
// lines are not those of a journal.
std::optional<Journal> Read_Journal(Text_View text);

}  // namespace rivelt
