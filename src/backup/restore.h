// The originals that updates have replaced: listed, and put back.

#pragma once

#include <cstdint>
#include <vector>

#include "backup/update_folder.h"
#include "system/file_service.h"
#include "text/text.h"

namespace rivelt {

// The words in a journal.
inline constexpr Text_View Made_By_Update = u"update";
inline constexpr Text_View Made_By_Restore = u"restore";

struct Backup {
  enum class State {
    Finished,    // of a finished update: the route can be made what it was before it
    Unfinished,  // of an update that has not finished
    Set_Aside,   // of an update that was rolled back: what somebody had changed in between
    Unreadable,  // the folder or its journal cannot be read, or the journal is damaged
  };

  Text Route;  // the name of its folder
  Text Time;   // 2026-11-22 20.15.07
  State Kind = State::Finished;
  Text Made_By;  // of a finished one: the word in its journal
  Long Files = 0;
  std::uint64_t Bytes = 0;
};

// In the order of routes, the oldest first. Failure: the folder of the backups cannot be read.
std::vector<Backup> List_Backups(File_System_Object& files, Text_View root);

// The times of the route's finished updates, the oldest first. One that cannot be read is left out.
std::vector<Text> Finished_Updates(const Updated_Route& route);

// What a restore does, and what is to be looked at because it may be on other numbers. Places below
// the route's folder.
struct Restored {
  std::vector<Text> Put_Back;
  std::vector<Text> Removed;     // the route did not have them then
  std::vector<Text> From_Later;  // the original is from a later update than the wished one
  std::vector<Text> Newer;       // newer than the backup and in none
  std::vector<Text> Unreadable;  // times of later backups that cannot be read
};

// Makes the route what it was just before the update of that time: every file that this update or a
// later one has replaced becomes what the earliest of them kept. It is an Update of its own. The
// caller holds the lock and has recovered the route's updates. report is complete before the first
// file moves. Failure: as of Update, or there is no finished backup of that time.
void Restore_Backup(const Updated_Route& route, Text_View time, Restored& report);

}  // namespace rivelt
