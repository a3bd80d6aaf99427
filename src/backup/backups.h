// The originals that updates have replaced: listed, and put back.

#pragma once

#include <cstdint>
#include <vector>

#include "system/file_service.h"
#include "text/text.h"

namespace rivelt {

struct Backup {
  enum class State {
    Finished,    // of a finished update: the route can be made what it was before it
    Unfinished,  // of an update that has not finished
    Set_Aside,   // of an update that was rolled back: what somebody had changed in between
  };

  Text Route;  // the name of its folder
  Text Time;   // 2026-11-22 20.15.07
  State Kind = State::Finished;
  Long Files = 0;
  std::uint64_t Bytes = 0;
  std::vector<Text> Changed;  // places of files that were no longer what the check had read
};

// In the order of routes, the oldest first. Failure: they cannot be read.
std::vector<Backup> List_Backups(File_System_Object& files, Text_View root);

// Places below the route's folder.
struct Restored {
  std::vector<Text> Put_Back;
  std::vector<Text> Removed;     // the route did not have them then
  std::vector<Text> From_Later;  // of those put back: the original is from a later update
  std::vector<Text> Newer;       // left alone: newer than the backup and in none
};

// Makes the route what it was just before the update of that time: every file that this update or a
// later one has replaced becomes what the earliest of them kept. What is replaced goes into a new
// backup. The caller holds the lock and has recovered the route's updates. Failure: there is no
// finished backup of that time, or it cannot be done; Has_Unfinished_Update says whether the route
// was touched.
Restored Restore_Backup(File_System_Object& files, Text_View root, Text_View route, Text_View time);

struct Restore_Result {
  enum class End {
    Done,
    Lock_Held,        // another program is at work; nothing was touched
    Nothing_Touched,  // it could not be begun
    Rolled_Back,      // it failed part-way, and the route is what it was
    Unfinished,       // it failed part-way; the next start rolls it back
  };
  End How = End::Done;
  Restored Files;
};

}  // namespace rivelt
