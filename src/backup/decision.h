// What is to become of an update that has not finished, by what is found of it.

#pragma once

#include <cstdint>
#include <vector>

namespace rivelt {

// What is found in the place of one file of the update.
enum class Found : std::uint8_t {
  Original,   // what was there, or the very file that is kept, edited in place
  New,        // what the update was to put there
  Either,     // original and new file are the same in name and bytes, and so is what is found
  Missing,    // nothing, though there was a file and there was to be one
  Other,      // somebody has changed it since
  Not_Moved,  // as Other, but the new file still waits where the update takes it from
};

enum class Outcome : std::uint8_t {
  Untouched,    // nothing in the route is the update's
  Finished,     // only its last steps are missing
  Rolled_Back,  // the originals are to be put back
};

// all_moved: the update noted that it had moved its last file.
Outcome Decide(const std::vector<Found>& files, bool all_moved);

}  // namespace rivelt
