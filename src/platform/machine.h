// What the mains of the programs need of the machine that they run on, beside a window. Each system
// defines these functions once.

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "system/file_service.h"
#include "system/registry_service.h"

namespace rivelt {

// The source of the installation's path.
std::unique_ptr<Registry> Machine_Registry();

// The files of this machine. As Create_File_System_Object.
std::unique_ptr<File_System_Object> Machine_Files();

// The command line in UTF-8, without the program's name.
std::vector<std::string> Command_Line(int argc, char** argv);

// Whether a person types standard input, or sees standard output.
bool Input_Is_Terminal();
bool Output_Is_Terminal();

// Makes the standard streams carry UTF-8 and bytes as they are, and makes a signal that asks the
// process to end (Ctrl-C, a closed terminal) set a flag instead. A closed pipe is a failed write
// from then on.
void Prepare_Console();
bool End_Requested();

}  // namespace rivelt
