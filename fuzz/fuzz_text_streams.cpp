// Text files: any bytes are read, and come through UTF-8.

#include "platform/linux/text_streams.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "fuzzing.h"
#include "text/utf8.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string path = "/dev/shm/rivelt-fuzz-" + std::to_string(getpid());
  const std::string bytes(data, data + size);
  std::ofstream(path, std::ios::binary) << bytes;
  const Text text = Open_Read_Stream(path)->ReadAll();
  const bool has_mark = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
  Require(text.size() == (size + 1) / 2 - (has_mark ? 1 : 0), "every two bytes are a unit");
  Require(To_Original_Bytes(From_Utf8(bytes)) == bytes, "any bytes come through UTF-8");
  std::filesystem::remove(path);
  return 0;
}
