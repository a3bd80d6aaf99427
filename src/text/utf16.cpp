#include "text/utf16.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace rivelt {
namespace {

static_assert(std::endian::native == std::endian::little, "units are read and written in place");

constexpr char16_t Mark = 0xFEFF;
constexpr char16_t Swapped_Mark = 0xFFFE;

}  // namespace

Text Decode_Utf16(Utf16_Content content) {
  if (content.Size == 0) return {};
  const std::size_t odd = content.Size % Unit_Size;
  Text text = std::move(content.Rest);
  text.resize(content.Size / Unit_Size + odd - 1);
  if (content.First == Swapped_Mark) {
    // The odd last byte has no partner to change places with.
    std::for_each(text.begin(), text.end() - static_cast<std::ptrdiff_t>(odd),
                  [](char16_t& unit) { unit = static_cast<char16_t>(unit >> 8 | unit << 8); });
  } else if (content.First != Mark) {
    text.insert(text.begin(), content.First);
  }
  return text;
}

Text From_Utf16(std::string_view bytes) {
  Utf16_Content content{.Rest = Text(bytes.size() / Unit_Size, u'\0'), .Size = bytes.size()};
  const std::string_view first = bytes.substr(0, Unit_Size);
  std::memcpy(&content.First, first.data(), first.size());
  bytes.remove_prefix(first.size());
  std::memcpy(content.Rest.data(), bytes.data(), bytes.size());
  return Decode_Utf16(std::move(content));
}

std::string To_Utf16(Text_View text) {
  return std::string(Utf16_Mark).append(Bytes_Of(text));
}

}  // namespace rivelt
