// What becomes of an unfinished update, by what is found of its files.

#pragma once

#include <cstdint>
#include <vector>

namespace rivelt {

enum class Found : std::uint8_t {
  Original,  // what was there, or the very file that is kept, edited in place
  New,       // what the update puts there
  Gone,      // nothing, though there was a file
  Other,     // somebody has changed it
};

struct Finding {
  Found What;
  bool Is_Both = false;  // original and new file are the same, and this is what was found
  bool Waits = false;    // the new file is still where the update takes it from

  bool Is_New() const { return What == Found::New || Is_Both; }

  // The update has moved the file, and somebody has changed it after.
  bool Has_Come() const { return What == Found::Other && !Waits; }
};

enum class Outcome : std::uint8_t {
  Finished,     // only its last steps are missing
  Untouched,    // nothing in the route is the update's
  Left,         // somebody has changed every file, so that its numbers are unknown
  Rolled_Back,  // the originals are put back
};

Outcome Decide(const std::vector<Finding>& files);

}  // namespace rivelt
