// The streams of text files: any bytes are read as a plain decoder reads them, and what is written
// is read again.

#include "platform/linux/text_streams.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzzing.h"
#include "text/utf8.h"

using namespace rivelt;
using namespace rivelt::fuzzing;

namespace {

Text Decoded(const std::string& bytes) {
  const bool swapped = bytes.starts_with("\xFE\xFF");
  Text text;
  for (std::size_t i = swapped || bytes.starts_with("\xFF\xFE") ? 2 : 0; i < bytes.size(); i += 2) {
    const unsigned first = static_cast<unsigned char>(bytes[i]);
    const unsigned second = i + 1 < bytes.size() ? static_cast<unsigned char>(bytes[i + 1]) : 0;
    const bool high_first = swapped && i + 1 < bytes.size();
    text += static_cast<char16_t>(high_first ? first << 8 | second : second << 8 | first);
  }
  return text;
}

std::string Encoded(const Text& text) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit & 255);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

std::string Bytes_Of(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void Write(const std::string& path, bool unicode, Text_View first, Text_View second) {
  const auto stream = Make_Write_Stream(path, true, unicode);
  stream->Write(first);
  stream->Write(second);
  stream->Close();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string path = "/dev/shm/rivelt-fuzz-" + std::to_string(getpid());
  const std::string bytes(data, data + size);
  std::ofstream(path, std::ios::binary) << bytes;
  const Text text = Open_Read_Stream(path)->ReadAll();
  Require(text == Decoded(bytes), "it is as the plain decoding");

  const std::size_t cut = size == 0 ? 0 : data[0] % (text.size() + 1);
  Write(path, true, Text_View(text).substr(0, cut), Text_View(text).substr(cut));
  Require(Bytes_Of(path) == Encoded(text), "it is written with one mark, the low byte first");
  Require(Open_Read_Stream(path)->ReadAll() == text, "what is written is read again");
  Write(path, false, text, u"");
  Require(Bytes_Of(path) == To_Utf8(text), "narrow text is written without a mark");
  Require(To_Utf8(From_Utf8(bytes)) == bytes, "any bytes come through UTF-8");
  std::filesystem::remove(path);
  return 0;
}
