#pragma once

#include <vector>

#include "backup/backups.h"
#include "system/file_service.h"
#include "text/log_line.h"
#include "text/text.h"

namespace rivelt {

// What was done about updates of a route that had not finished.
struct Recovery {
  bool Was_Rolled_Back = false;
  std::vector<Text> Set_Aside;  // places below the route's folder that somebody else's file held
};

// Decides by what is found in the route what becomes of its updates that have not finished, and
// does it: completes them, rolls them back, or drops them if they have touched nothing. Failure:
// it cannot be done, or the route or its World folder has gone; what was done so far holds and is
// in the report, and it can be tried again.
void Recover_Updates(File_System_Object& files, Text_View root, Text_View route, Recovery& report);

// The same, reported as lines for the log as they come.
void Recover_Updates(File_System_Object& files, Text_View root, Text_View route,
                     const Log_Line& report);

// The same, with a line in place of the failure.
void Recover_Or_Report(File_System_Object& files, Text_View root, const Text& route,
                       const Log_Line& report);

// The same for each route on its own. Holds the lock while it works; while another program has it,
// nothing is done or reported.
void Recover_At_Start(File_System_Object& files, Text_View root, const Log_Line& report);

// Restore_Backup under the caller's lock, after a recovery of the route, and what became of it.
Restore_Result Restore_Route(File_System_Object& files, Text_View root, const Text& route,
                             const Text& time, const Log_Line& report);

// Their folders.
std::vector<Text> Routes_With_Unfinished_Updates(File_System_Object& files, Text_View root);

bool Has_Unfinished_Update(File_System_Object& files, Text_View root, Text_View route);

}  // namespace rivelt
