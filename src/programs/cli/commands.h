// The commands of the console program. Each gives the exit status of the process.

#pragma once

#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "programs/cli/console_window.h"

namespace rivelt {

enum Exit_Status : int {
  Exit_Done = 0,
  Exit_Failure = 1,  // the program reported a failure, or a script stopped
  Exit_Wrong_Usage = 2,
  Exit_Interrupted = 130,
};

// What a check or update is to be made with.
struct Route_Settings {
  std::string Route;
  bool All_Sections = false;
  std::vector<std::string> Replacements;  // OLD=NEW
  std::vector<std::string> Deletions;     // OLD
  std::optional<std::string> Log_File;
  bool Yes = false;
};

int List_Routes(Console_Window& window, Output& output);
int Run_Command(Console_Window& window, Control button, const Route_Settings& settings);
int Run_Script(Console_Window& window, Output& output, std::istream& script);

}  // namespace rivelt
