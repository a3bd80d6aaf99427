// What becomes of updates that have not finished.

#pragma once

#include <vector>

#include "backup/update_folder.h"
#include "system/file_service.h"
#include "text/log_line.h"
#include "text/text.h"

namespace rivelt {

// Finishes the route's unfinished updates, takes them back or leaves them, by what is found in the
// route, the newest first. Gives what became of the newest, which is Untouched where there is none
// or the route's folder has gone. report gets a line for each update that was taken back or left,
// and for each file that was set aside. Failure: it cannot be done now; what was done so far holds,
// and it can be tried again.
Outcome Recover_Updates(const Updated_Route& route, const Log_Line& report);

// The folders of the routes that have any.
std::vector<Text> Routes_With_Unfinished_Updates(File_System_Object& files, Text_View root);

}  // namespace rivelt
