#include "programs/cli/output.h"

#include <cerrno>
#include <cstdio>

#include "text/primitives.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

std::string With_Plain_Line_Ends(Text_View text) {
  return To_Utf8(Replace_Text(text, Line_End, u"\n"));
}

[[noreturn]] void Fail() {
  if (errno != EPIPE) Write_Error("Reason: standard output cannot be written");
  throw Interrupted();
}

}  // namespace

void Output::Write(Text_View text) {
  const std::string bytes = With_Plain_Line_Ends(text);
  Write(bytes);
}

void Output::Write(std::string_view bytes) {
  if (bytes.empty()) return;
  if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size()) Fail();
  In_Line = bytes.back() != '\n';
}

void Output::End_Line() {
  if (In_Line) Write("\n");
}

void Output::Flush() {
  // It may also have failed in an earlier flush.
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) Fail();
}

void Write_Error(Text_View line) {
  const std::string bytes = With_Plain_Line_Ends(line);
  Write_Error(bytes);
}

void Write_Error(std::string_view line) {
  std::fflush(stdout);  // the two may go to one place
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fputc('\n', stderr);
}

}  // namespace rivelt
