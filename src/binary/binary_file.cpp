#include "binary/binary_file.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "binary/blocks.h"
#include "text/primitives.h"
#include "text/utf16.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

constexpr std::string_view Plain = "SIMISA@@@@@@@@@@";
constexpr std::string_view Compressed = "SIMISA@F";  // and the size of the content, and "@@@@"
constexpr std::size_t Container_Size = Plain.size();
constexpr std::size_t Head_Size = 16;  // of the content, like "JINX0w0b______" and a line end

// Empty unless it is a compressed file.
std::optional<std::uint64_t> Size_In_Header(std::string_view bytes) {
  if (bytes.size() < Container_Size || !bytes.starts_with(Compressed)) return {};
  if (!bytes.substr(0, Container_Size).ends_with("@@@@")) return {};
  std::uint32_t size;
  std::memcpy(&size, bytes.data() + Compressed.size(), sizeof(size));
  return Container_Size + std::uint64_t{size};
}

struct End_Inflation {
  void operator()(z_stream* stream) const { inflateEnd(stream); }
};

// Uncompresses the stream into a binary file, which must get that size. Memory grows with the
// output, not with the size that a header claims. The size alone shows that a stream without a
// checksum is complete. Bytes after the stream are ignored.
std::string Inflate(std::string_view bytes, std::uint64_t size) {
  z_stream stream{};
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  if (inflateInit(&stream) != Z_OK) throw std::bad_alloc();
  const std::unique_ptr<z_stream, End_Inflation> owner(&stream);
  std::string file(Plain);
  int status = Z_OK;
  while (status == Z_OK) {
    constexpr std::uint64_t first_step = 1 << 16;
    const std::size_t filled = file.size();
    // One byte more than the size, to notice a longer stream.
    file.resize(static_cast<std::size_t>(std::min(size + 1, filled * 2 + first_step)));
    stream.next_out = reinterpret_cast<Bytef*>(file.data() + filled);
    stream.avail_out = static_cast<uInt>(file.size() - filled);
    status = inflate(&stream, Z_NO_FLUSH);
    file.resize(file.size() - stream.avail_out);
  }
  if (status == Z_MEM_ERROR) throw std::bad_alloc();
  if (status != Z_STREAM_END && status != Z_BUF_ERROR)
    throw Unreadable_At(file.size(), u"the compressed data is damaged");
  if (file.size() != size)
    throw Unreadable_At(file.size(), u"the compressed data does not have the size in the header");
  return file;
}

// The UTF-8 text from start on.
Text Narrow_Text(std::string_view file, std::size_t start) {
  const std::string_view bytes = file.substr(start);
  Text text = From_Utf8(bytes);
  if (text.size() > Longest_Text - start) throw Unreadable_At(start, u"the text is too long");
  const std::string valid = To_Utf8(text);
  if (valid == bytes) return text;
  const auto differs = std::ranges::mismatch(bytes, valid).in1 - bytes.begin();
  throw Unreadable_At(start + static_cast<std::size_t>(differs), u"not valid UTF-8");
}

Text Text_Of_Uncompressed(std::string_view file) {
  const std::string_view head = file.substr(Container_Size, Head_Size);
  const bool has_head = head.starts_with("JINX0") && head.ends_with("______\r\n") &&
                        head.size() == Head_Size && (head[5] == 'w' || head[5] == 'T') &&
                        head[6] >= '0' && head[6] <= '9' && (head[7] == 'b' || head[7] == 't');
  if (!has_head) throw Unreadable_At(Container_Size, u"not a world file or track database");
  constexpr std::size_t start = Container_Size + Head_Size;
  Text text(file.begin(), file.begin() + start);
  if (head[7] == 't') return text + Narrow_Text(file, start);
  text[Container_Size + 7] = u't';
  return Read_Blocks(file, start, head[5] == 'w' ? File_Kind::World : File_Kind::Database,
                     std::move(text));
}

}  // namespace

bool Is_Binary(Text_View read) {
  const std::string_view start = Bytes_Of(read).substr(0, Compressed.size());
  return start == Compressed || start == Plain.substr(0, Compressed.size());
}

Text Text_Of_Binary(std::string_view bytes) {
  if (bytes.starts_with(Plain)) return Text_Of_Uncompressed(bytes);
  const auto size = Size_In_Header(bytes);
  if (!size) throw Unreadable_At(0, u"not a binary or compressed file");
  return Text_Of_Uncompressed(Inflate(bytes.substr(Container_Size), *size));
}

Text Text_Of_Binary(Text_View read, std::uint64_t file_size) {
  return Text_Of_Binary(Bytes_Of(read).substr(0, static_cast<std::size_t>(file_size)));
}

std::uint64_t Uncompressed_Size(Text_View read, std::uint64_t file_size) {
  return Size_In_Header(Bytes_Of(read)).value_or(Is_Binary(read) ? file_size : 0);
}

}  // namespace rivelt
