// Arbitrary blocks: what the sample's writer makes of a text, the reader turns back into that text.

#include "binary/binary_file.h"
#include "fuzzing.h"
#include "sample/binary_file.h"
#include "sample/text_file.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Input input = Read_Input(data, size);
  const bool is_world = input.Choice % 2 == 0;
  const Text_View kind = is_world ? u"w0t" : u"T0t";
  const Text text = sample::File_Text(kind, sample::Invented_Blocks(is_world, input.Units, 32));
  const std::string binary = sample::Binary_File(text);
  Require(Text_Of_Binary(binary) == text, "a binary file gives its text");
  Require(Text_Of_Binary(sample::Compressed_File(binary)) == text, "so does a compressed one");
  Require_Speed(input, [&](Text_View choices) {
    constexpr std::size_t most = 1 << 16;
    const Text blocks = sample::Invented_Blocks(is_world, choices.substr(0, most), most);
    Text_Of_Binary(sample::Binary_File(sample::File_Text(kind, u"") + blocks));
  });
  return 0;
}
