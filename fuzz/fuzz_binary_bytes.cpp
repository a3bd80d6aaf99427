// Arbitrary bytes, as a file and as the content of a file's outermost block. If they can be read,
// the sample's writer turns the text into a file that gives the same text again.

#include <string>

#include "binary/binary_file.h"
#include "fuzzing.h"
#include "sample/binary_file.h"
#include "sample/text_file.h"
#include "text/utf8.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

namespace {

std::string File_Of(bool is_world, const std::string& holds) {
  std::string file = sample::Binary_File(is_world ? sample::File_Text(u"w0t", u" Tr_Worldfile ( )")
                                                  : sample::File_Text(u"T0t", u" TrackDB ( )"));
  const auto size = static_cast<std::uint32_t>(1 + holds.size());
  return file.replace(36, sizeof(size), reinterpret_cast<const char*>(&size), sizeof(size)) + holds;
}

Text Read(const std::string& file) try {
  return Text_Of_Binary(file);
} catch (const Failure& failure) {
  Require(!failure.Reason().empty(), "it says why");
  return {};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  const bool is_world = input.Choice % 2 == 0;
  const std::string bytes(data + (size > 0 ? 1 : 0), data + size);
  Read(bytes);
  const Text text = Read(File_Of(is_world, bytes));
  if (!text.empty()) {
    Require(Read(sample::Binary_File(text)) == text, "it gives the same text again");
  }
  Require_Speed(input, [&](Text_View units) {
    Read(File_Of(is_world, std::string(units.begin(), units.end())));
  });
  return 0;
}
