#include "platform/window_program.h"

#include <exception>

#include "platform/machine.h"
#include "platform/windows/windows_window.h"

namespace rivelt {

int Run_Window_Program(char* /*program_name*/) try {
  const auto registry = Machine_Registry();
  Windows_Window window;
  window.Start(*registry, Machine_Files);
  window.Run();
  return 0;
} catch (const std::exception&) {
  return 1;
}

}  // namespace rivelt
