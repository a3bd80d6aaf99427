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
  Exit_Failure = 1,  // the program reported a failure, a script stopped, or the answer was no
  Exit_Wrong_Usage = 2,
  Exit_Interrupted = 130,
};

// A setting that cannot be made. The message, of complete lines, says why.
struct Wrong_Usage {
  std::string Message;
};

// What a check or update is to be made with.
struct Route_Settings {
  std::string Route;
  bool All_Sections = false;
  std::vector<std::string> Replacements;  // OLD=NEW
  std::vector<std::string> Deletions;     // OLD
  bool Whole_Route = false;
  std::optional<std::string> Log_File;
};

// Which backups a command means.
struct Backup_Settings {
  std::optional<std::string> Route;
  std::optional<std::string> Time;  // the newest without it
};

// The route that a person means by its name, or by its folder where no route has that name; letter
// case does not count. Throws Wrong_Usage if there is none, or several: of routes of one name the
// controls reach only the first.
Installed_Route Route_To_Pick(const Console_Window& window, const std::string& wanted);

// Whether the person at the terminal agrees to what has been asked, or has said --yes; says so if
// not.
bool Is_Confirmed(const Console_Window& window);

// What became of the route that a command could not change as it was told to.
std::string What_Became_Of_It(Change_End end);

int List_Routes(const Console_Window& window, Output& output);
int Check_Route(Console_Window& window, const Route_Settings& settings);
int Update_Route(Console_Window& window, const Route_Settings& settings);
int List_Backups(Console_Window& window, Output& output, const Backup_Settings& settings);
int Restore_Backup(Console_Window& window, Output& output, const Backup_Settings& settings);
int Count_References(Console_Window& window, Output& output, const std::string& route, bool whole);
int Convert_To_Text(Console_Window& window, Output& output, const std::string& route);
int Run_Script(Console_Window& window, Output& output, std::istream& script);

}  // namespace rivelt
