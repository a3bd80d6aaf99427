// Wine's registry file: any bytes are accepted, and a value written after any bytes is read.

#include <string>

#include "fuzzing.h"
#include "platform/linux/registry_text.h"
#include "text/letter_case.h"
#include "text/utf8.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

namespace {

// Each unit by number, in the four digits that keep it apart from what follows.
std::string Escaped(Text_View text) {
  std::string escaped;
  for (const char16_t unit : text) {
    escaped += "\\x";
    for (int shift = 12; shift >= 0; shift -= 4) escaped += "0123456789abcdef"[unit >> shift & 15];
  }
  return escaped;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string file(data, data + size);
  Read_Registry_Key(file, "Ab\\c");
  // An empty line ends whatever comes before it.
  const Text text = From_Utf8(file.substr(0, 300));
  const std::string written = "\"" + Escaped(text) + "\"";
  const std::string ours = "\n\n[AB\\\\C] 1\n@=str(2):\"@\"\n" + written + "=" + written + "\n";
  const auto values = Read_Registry_Key(file + ours, "aB\\c");
  const Registry_Value* value = Find_Value(*values, To_Original_Bytes(text));
  Require(value != nullptr && value->Data == To_Original_Bytes(text + u'\0'),
          "a written value is read");
  Require_Speed(Read_Input(data, size), [](Text_View long_text) {
    Read_Registry_Key("[a]\n" + To_Original_Bytes(long_text), "a");
  });
  return 0;
}
