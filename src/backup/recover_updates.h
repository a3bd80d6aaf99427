#pragma once

#include <vector>

#include "system/file_service.h"
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

// Their folders.
std::vector<Text> Routes_With_Unfinished_Updates(File_System_Object& files, Text_View root);

bool Has_Unfinished_Update(File_System_Object& files, Text_View root, Text_View route);

}  // namespace rivelt
