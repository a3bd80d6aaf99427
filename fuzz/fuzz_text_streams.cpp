// Text files: any bytes are read as a plain decoder reads them, and come through UTF-8.

#include "platform/linux/text_streams.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "fuzzing.h"
#include "text/utf8.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

namespace {

Text Decoded(std::string bytes) {
  const bool swapped = bytes.starts_with("\xFE\xFF");
  if (swapped || bytes.starts_with("\xFF\xFE")) bytes.erase(0, 2);
  Text text;
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    const unsigned first = static_cast<unsigned char>(bytes[i]);
    const bool is_odd = i + 1 == bytes.size();
    const unsigned second = is_odd ? 0 : static_cast<unsigned char>(bytes[i + 1]);
    text += static_cast<char16_t>(swapped && !is_odd ? first << 8 | second : second << 8 | first);
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string path = "/dev/shm/rivelt-fuzz-" + std::to_string(getpid());
  const std::string bytes(data, data + size);
  std::ofstream(path, std::ios::binary) << bytes;
  const Text text = Open_Read_Stream(path)->ReadAll();
  Require(text == Decoded(bytes), "it is as the plain decoding");
  Require(To_Utf8(From_Utf8(bytes)) == bytes, "any bytes come through UTF-8");
  std::filesystem::remove(path);
  return 0;
}
