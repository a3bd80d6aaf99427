#pragma once

namespace rivelt {

// Runs the program in the window system of this machine until its window has gone, and gives the
// exit status. Nothing is read from the command line.
int Run_Window_Program(char* program_name);

}  // namespace rivelt
