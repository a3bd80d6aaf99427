#include "platform/machine.h"

#include <signal.h>
#include <unistd.h>

#include "platform/linux/files.h"
#include "platform/linux/registry.h"

namespace rivelt {
namespace {

volatile sig_atomic_t End_Flag = 0;

extern "C" void Set_End_Flag(int) {
  End_Flag = 1;
}

// Without SA_RESTART, so that waiting for input ends, too. A signal that whoever started the
// process chose to ignore, as nohup does, stays ignored.
void End_By(int signal_number) {
  struct sigaction action {};
  if (sigaction(signal_number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) return;
  action = {};
  action.sa_handler = Set_End_Flag;
  sigaction(signal_number, &action, nullptr);
}

}  // namespace

std::unique_ptr<Registry> Machine_Registry() {
  return std::make_unique<Wine_Registry>(Wine_Prefix_Of_Account());
}

std::unique_ptr<File_System_Object> Machine_Files() {
  return Files_Of_Linux(Wine_Prefix_Of_Account());
}

std::vector<std::string> Command_Line(int argc, char** argv) {
  return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

bool Input_Is_Terminal() {
  return isatty(STDIN_FILENO) == 1;
}
bool Output_Is_Terminal() {
  return isatty(STDOUT_FILENO) == 1;
}

void Prepare_Console() {
  for (const int signal_number : {SIGINT, SIGTERM, SIGHUP}) End_By(signal_number);
  signal(SIGPIPE, SIG_IGN);
}

bool End_Requested() {
  return End_Flag != 0;
}

}  // namespace rivelt
