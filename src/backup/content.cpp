#include "backup/content.h"

#include <bit>
#include <cstring>
#include <utility>

namespace rivelt {
namespace {

static_assert(std::endian::native == std::endian::little, "words are read in place");

constexpr std::uint64_t Mixed(std::uint64_t checksum, std::uint64_t word) {
  checksum = (checksum ^ word) * 0x9E3779B97F4A7C15;
  return checksum ^ (checksum >> 32);
}

}  // namespace

void Content_Reader::Add(std::string_view bytes) {
  while (!bytes.empty()) {
    const bool is_word = Read.Size % sizeof Word == 0 && bytes.size() >= sizeof Word;
    if (is_word) {
      std::memcpy(&Word, bytes.data(), sizeof Word);
    } else {
      Word |= std::uint64_t{static_cast<unsigned char>(bytes[0])} << (Read.Size % sizeof Word * 8);
    }
    const std::size_t count = is_word ? sizeof Word : 1;
    bytes.remove_prefix(count);
    Read.Size += count;
    if (Read.Size % sizeof Word == 0) Read.Checksum = Mixed(Read.Checksum, std::exchange(Word, 0));
  }
}

Content Content_Reader::Whole() const {
  return {Read.Size, Mixed(Mixed(Read.Checksum, Word), Read.Size)};
}

Content Content_Of(const File& file) {
  Content_Reader reader;
  file.Read_Bytes([&](std::string_view bytes) { reader.Add(bytes); });
  return reader.Whole();
}

bool Has_Content(const File& file, const Content& content) {
  return file.State().Size == content.Size && Content_Of(file) == content;
}

Content Content_Of(Text_View text) {
  Content_Reader reader;
  reader.Add({reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)});
  return reader.Whole();
}

}  // namespace rivelt
