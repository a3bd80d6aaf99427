#include "binary/binary_file.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "binary/read_blocks.h"
#include "text/primitives.h"
#include "text/utf16.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

// The first bytes of a file, a compressed one has the size of its content between the last two.
constexpr std::string_view Plain = "SIMISA@@@@@@@@@@";
constexpr std::string_view Compressed = "SIMISA@F";
constexpr std::string_view After_Size = "@@@@";
constexpr std::size_t Container_Size = Plain.size();
constexpr std::size_t Mark_Size = Compressed.size();

// Those of the content follow, which are like "JINX0w0b______" and a line end.
constexpr std::size_t Head_Size = 16;

bool Is_Compressed(std::string_view bytes) {
  return bytes.starts_with(Compressed) && bytes.size() >= Container_Size;
}

bool Is_Binary_Start(std::string_view bytes) {
  return bytes.starts_with(Plain.substr(0, Mark_Size)) || bytes.starts_with(Compressed);
}

std::uint32_t Size_In_Header(std::string_view bytes) {
  std::uint32_t size;
  std::memcpy(&size, bytes.substr(Mark_Size).data(), sizeof(size));
  return size;
}

struct End_Inflation {
  void operator()(z_stream* stream) const { inflateEnd(stream); }
};

// Appends what the stream gives, which is to make the file so large. Takes memory for what comes,
// not for what the size announces. Only the size says whether a stream without its checksum is
// whole; what comes after a stream does not matter.
void Inflate(std::string_view bytes, std::uint64_t size, std::string& file) {
  constexpr std::size_t usual_ratio = 8;
  constexpr std::size_t most_at_once = std::size_t{1} << 28;
  z_stream stream{};
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream.avail_in =
      static_cast<uInt>(std::min<std::size_t>(bytes.size(), std::numeric_limits<uInt>::max()));
  if (inflateInit(&stream) != Z_OK) throw std::bad_alloc();
  const std::unique_ptr<z_stream, End_Inflation> owner(&stream);
  int status = Z_OK;
  while (status == Z_OK) {
    const std::size_t filled = file.size();
    const std::size_t step = std::min(std::max(filled, usual_ratio * bytes.size()), most_at_once);
    // There is room for a byte more than the size, to see whether the stream gives more.
    file.resize(static_cast<std::size_t>(std::min<std::uint64_t>(size + 1, filled + step)));
    stream.next_out = reinterpret_cast<Bytef*>(file.data() + filled);
    stream.avail_out = static_cast<uInt>(file.size() - filled);
    status = inflate(&stream, Z_NO_FLUSH);
    file.resize(file.size() - stream.avail_out);
  }
  if (status == Z_MEM_ERROR) throw std::bad_alloc();
  if (status != Z_STREAM_END && status != Z_BUF_ERROR)
    throw Unreadable_At(file.size(), u"the compressed data is damaged");
  if (file.size() != size)
    throw Unreadable_At(file.size(), u"the compressed data is not of the size in the header");
}

// The text in UTF-8 from start on.
Text Narrow_Text(std::string_view file, std::size_t start) {
  const std::string_view bytes = file.substr(start);
  Text text = From_Utf8(bytes);
  const std::string valid = To_Utf8(text);
  if (valid == bytes) return text;
  const auto differs = std::ranges::mismatch(bytes, valid).in1 - bytes.begin();
  throw Unreadable_At(start + static_cast<std::size_t>(differs), u"this is not UTF-8");
}

Text Text_Of_Uncompressed(std::string_view file) {
  const std::string_view head = file.substr(Container_Size, Head_Size);
  const bool has_head = head.starts_with("JINX0") && head.ends_with("______\r\n") &&
                        head.size() == Head_Size && (head[5] == 'w' || head[5] == 'T') &&
                        head[6] >= '0' && head[6] <= '9' && (head[7] == 'b' || head[7] == 't');
  if (!has_head) throw Unreadable_At(Container_Size, u"this begins no world file and no database");
  constexpr std::size_t start = Container_Size + Head_Size;
  Text text(file.begin(), file.begin() + start);
  if (head[7] == 't') return text + Narrow_Text(file, start);
  text[Container_Size + 7] = u't';
  return Read_Blocks(file, start, head[5] == 'w' ? File_Kind::World : File_Kind::Database,
                     std::move(text));
}

}  // namespace

bool Is_Binary(Text_View read) {
  return Is_Binary_Start(Bytes_Of(read));
}

Text Text_Of_Binary(std::string_view bytes) {
  if (bytes.starts_with(Plain)) return Text_Of_Uncompressed(bytes);
  if (!Is_Compressed(bytes) || !bytes.substr(Mark_Size + 4).starts_with(After_Size))
    throw Unreadable_At(0, u"this begins no binary and no compressed file");
  std::string file(Plain);
  const std::uint64_t size = Container_Size + std::uint64_t{Size_In_Header(bytes)};
  Inflate(bytes.substr(Container_Size), size, file);
  return Text_Of_Uncompressed(file);
}

Text Text_Of_Binary(Text_View read, std::uint64_t file_size) {
  return Text_Of_Binary(Bytes_Of(read).substr(0, static_cast<std::size_t>(file_size)));
}

std::uint64_t Uncompressed_Size(const File& file) {
  struct Start_Is_Read {};
  std::string start;
  try {
    file.Read_Bytes([&](std::string_view piece) {
      start = piece.substr(0, Container_Size);
      throw Start_Is_Read();
    });
  } catch (const Start_Is_Read&) {
  }
  if (Is_Compressed(start)) return Container_Size + std::uint64_t{Size_In_Header(start)};
  return Is_Binary_Start(start) ? file.State().Size : 0;
}

}  // namespace rivelt
