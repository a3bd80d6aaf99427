#include "programs/sample/text_file.h"

#include <array>
#include <charconv>
#include <fstream>
#include <string>
#include <system_error>

namespace rivelt::sample {

Text File_Start(Text_View kind) {
  return Joined(u"SIMISA@@@@@@@@@@JINX0", kind, u"______", Line_End, Line_End);
}

Text Digits(double number) {
  std::array<char, 32> digits;
  char* const end = digits.data() + digits.size();
  return Text(digits.data(),
              std::to_chars(digits.data(), end, number, std::chars_format::general, 10).ptr);
}

void Write_Text_File(const std::filesystem::path& path, Text_View text) {
  std::string bytes = "\xFF\xFE";
  bytes.reserve(2 + 2 * text.size());
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  Write_Bytes(path, bytes);
}

void Write_Bytes(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) {
    throw std::filesystem::filesystem_error("cannot write", path,
                                            std::make_error_code(std::errc::io_error));
  }
}

}  // namespace rivelt::sample
