// Puts new files into a route so that the update is finished or rolled back as a whole. After any
// failure each file is identified by its content, and every original is kept.

#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "backup/update_folder.h"
#include "system/file_service.h"
#include "text/log_line.h"
#include "text/text.h"

namespace rivelt {

// What an update does to one file of the route.
struct Replacement {
  Text Place;   // below the route's folder
  Text Source;  // where the new file waits, below Quenby; empty if Make makes it, or there is none

  // Makes the new file under the path that it is given, where there is no file. The file is removed
  // if there is neither a Source nor this.
  std::function<void(const Text& path)> Make = nullptr;

  std::optional<File_State> As_Checked = std::nullopt;  // the original's when the check read it
  bool Needs_Original = false;  // the update fails when it comes to the file and there is none
};

// Keeps every original, writes the journal, flushes all of it to disk, and then moves the new files
// in the order of the list. After an update of the route that failed goes on with that one. made_by
// is a word for a person. changed gets the place of each original that is no longer as the check
// read it, before the first file moves. Failure: without a journal in an unfinished folder nothing
// was touched; else Recover_Updates rolls it back.
void Update(const Updated_Route& route, Text_View made_by,
            const std::vector<Replacement>& replacements, const Log_Line& changed);

// Of an update that failed and has nothing left to move: finishes it if it has moved every file.
void Finish_If_All_Moved(const Updated_Route& route);

}  // namespace rivelt
