#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include "platform/machine.h"

namespace rivelt {
namespace {

// In a process of its own, which the signals may change.
template <class Body>
void Expect_In_Child(const Body& body) {
  EXPECT_EXIT(_exit(body() ? 0 : 1), testing::ExitedWithCode(0), "");
}

TEST(Linux_Machine_Console, A_Signal_To_End_Sets_The_Flag_And_A_Closed_Pipe_Does_Not) {
  for (const int signal_number : {SIGINT, SIGTERM, SIGHUP}) {
    Expect_In_Child([&] {
      Prepare_Console();
      int pipe_ends[2];
      const bool is_open = pipe(pipe_ends) == 0 && close(pipe_ends[0]) == 0;
      const bool refused = is_open && write(pipe_ends[1], "x", 1) < 0;
      const bool before = End_Requested();
      return raise(signal_number) == 0 && refused && !before && End_Requested();
    });
  }
}

TEST(Linux_Machine_Console, A_Signal_That_Was_Ignored_Before_Stays_Ignored) {
  Expect_In_Child([] {
    signal(SIGHUP, SIG_IGN);
    Prepare_Console();
    return raise(SIGHUP) == 0 && !End_Requested();
  });
}

}  // namespace
}  // namespace rivelt
