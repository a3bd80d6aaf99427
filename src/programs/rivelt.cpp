// The program in its window.

#include "platform/window_program.h"

int main(int, char** argv) {
  return rivelt::Run_Window_Program(argv[0]);
}
