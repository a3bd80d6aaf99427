#include <string>

#include "form/reference_report.h"
#include "programs/cli/commands.h"

namespace rivelt {

int Count_References(Console_Window& window, Output& output, const std::string& wanted,
                     bool whole) {
  const Route_References found = window.Form().References_Of(Route_To_Pick(window, wanted).Folder);
  output.Write(Reference_Report(found, whole));
  return found.All_Lead_Somewhere() ? Exit_Done : Exit_Failure;
}

}  // namespace rivelt
