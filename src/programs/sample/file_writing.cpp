#include "programs/sample/file_writing.h"

#include <cstddef>
#include <fstream>
#include <string>
#include <system_error>

namespace rivelt::sample {

void Write_Text_File(const std::filesystem::path& path, Text_View text) {
  std::string bytes(2 + 2 * text.size(), '\0');
  bytes[0] = static_cast<char>(0xFF);
  bytes[1] = static_cast<char>(0xFE);
  for (std::size_t i = 0; i < text.size(); ++i) {
    bytes[2 + 2 * i] = static_cast<char>(text[i] & 0xFF);
    bytes[3 + 2 * i] = static_cast<char>(text[i] >> 8);
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
