#include "platform/machine.h"

#include "platform/windows/win32.h"

// After the header above, which they depend on.
#include <shellapi.h>

#include <fcntl.h>
#include <io.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>

#include "platform/windows/files.h"
#include "platform/windows/registry.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

std::atomic<bool> End_Flag = false;
UINT Former_Output_Page = 0;
UINT Former_Input_Page = 0;

bool Is_Terminal(DWORD stream) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(stream), &mode) != FALSE;
}

// Runs on a thread of its own.
BOOL WINAPI Set_End_Flag(DWORD event) {
  End_Flag = true;
  // When this returns after one of the other events the system ends the process. The main thread
  // needs the time that is left until the system does so anyway.
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(INFINITE);
  return TRUE;
}

// The code pages belong to the console, which outlives this process.
void Restore_Code_Pages() {
  if (Former_Output_Page != 0) SetConsoleOutputCP(Former_Output_Page);
  if (Former_Input_Page != 0) SetConsoleCP(Former_Input_Page);
}

}  // namespace

std::unique_ptr<Registry> Machine_Registry() {
  return Windows_Registry();
}

std::unique_ptr<File_System_Object> Machine_Files() {
  return Windows_Files();
}

// The arguments of main are narrow and have lost what the code page lacks.
std::vector<std::string> Command_Line(int /*argc*/, char** /*argv*/) {
  struct Free_Memory {
    void operator()(LPWSTR* memory) const { LocalFree(memory); }
  };
  int count = 0;
  const std::unique_ptr<LPWSTR, Free_Memory> arguments(
      CommandLineToArgvW(GetCommandLineW(), &count));
  std::vector<std::string> line;
  for (int i = 1; arguments && i < count; ++i) {
    line.push_back(To_Original_Bytes(From_Wide(arguments.get()[i])));
  }
  return line;
}

bool Input_Is_Terminal() {
  return Is_Terminal(STD_INPUT_HANDLE);
}
bool Output_Is_Terminal() {
  return Is_Terminal(STD_OUTPUT_HANDLE);
}

void Prepare_Console() {
  Former_Output_Page = GetConsoleOutputCP();
  Former_Input_Page = GetConsoleCP();
  std::atexit(Restore_Code_Pages);
  SetConsoleOutputCP(CP_UTF8);
  SetConsoleCP(CP_UTF8);
  for (std::FILE* stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
  SetConsoleCtrlHandler(Set_End_Flag, TRUE);
}

bool End_Requested() {
  return End_Flag;
}

}  // namespace rivelt
