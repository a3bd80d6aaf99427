#include "backup/content.h"

#include <bit>
#include <cstring>

namespace rivelt {
namespace {

static_assert(std::endian::native == std::endian::little, "words are read in place");

constexpr std::uint64_t Odd_Factor = 0x9E3779B97F4A7C15;

constexpr std::uint64_t Mixed(std::uint64_t checksum, std::uint64_t word) {
  checksum = (checksum ^ word) * Odd_Factor;
  return checksum ^ (checksum >> 32);
}

}  // namespace

void Content_Reader::Add(std::string_view bytes) {
  for (; !bytes.empty() && Read.Size % 8 != 0; bytes.remove_prefix(1)) Add_Byte(bytes.front());
  std::uint64_t word = 0;
  for (; bytes.size() >= sizeof word; bytes.remove_prefix(sizeof word)) {
    std::memcpy(&word, bytes.data(), sizeof word);
    Read.Size += sizeof word;
    Add_Word(word);
  }
  for (const char byte : bytes) Add_Byte(byte);
}

void Content_Reader::Add_Byte(char byte) {
  Pending |= std::uint64_t{static_cast<unsigned char>(byte)} << (Read.Size % 8 * 8);
  if (++Read.Size % 8 == 0) Add_Word(Pending);
}

void Content_Reader::Add_Word(std::uint64_t word) {
  Read.Checksum = Mixed(Read.Checksum, word);
  Pending = 0;
}

Content Content_Reader::Whole() const {
  return {Read.Size, Mixed(Mixed(Read.Checksum, Pending), Read.Size)};
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
