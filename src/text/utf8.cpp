#include "text/utf8.h"

#include <cstddef>
#include <cstdint>

namespace rivelt {
namespace {

constexpr char32_t Replacement_Character = 0xFFFD;

constexpr bool Is_Surrogate(char32_t code) {
  return code >= 0xD800 && code < 0xE000;
}

// A character at the start of the bytes; a Length of 0 if there is no valid one.
struct Decoded {
  char32_t Code = 0;
  std::size_t Length = 0;
};

Decoded Decode(std::string_view bytes) {
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
  const std::uint8_t lead = byte(0);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return {};
  char32_t code = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return {};
    code = (code << 6) | (byte(i) & 0x3Fu);
  }
  constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
  if (code < smallest[length] || code > 0x10FFFF || Is_Surrogate(code)) return {};
  return {code, length};
}

void Append_Code(Text& text, char32_t code) {
  if (code < 0x10000) {
    text += static_cast<char16_t>(code);
    return;
  }
  text += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
  text += static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
}

void Append_Utf8(std::string& bytes, char32_t code) {
  const auto tail = [&](int shift) { bytes += static_cast<char>(0x80 | ((code >> shift) & 0x3F)); };
  if (code < 0x80) {
    bytes += static_cast<char>(code);
  } else if (code < 0x800) {
    bytes += static_cast<char>(0xC0 | (code >> 6));
    tail(0);
  } else if (code < 0x10000) {
    bytes += static_cast<char>(0xE0 | (code >> 12));
    tail(6);
    tail(0);
  } else {
    bytes += static_cast<char>(0xF0 | (code >> 18));
    tail(12);
    tail(6);
    tail(0);
  }
}

// append_lone is given each surrogate without its partner.
template <class Append_Lone>
std::string Encode(Text_View text, const Append_Lone& append_lone) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char32_t unit = text[i];
    const bool pair = unit >= 0xD800 && unit < 0xDC00 && i + 1 < text.size() &&
                      text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
    if (pair) {
      Append_Utf8(bytes, 0x10000 + ((unit - 0xD800) << 10) + (text[++i] - 0xDC00u));
    } else if (Is_Surrogate(unit)) {
      append_lone(bytes, unit);
    } else {
      Append_Utf8(bytes, unit);
    }
  }
  return bytes;
}

}  // namespace

Text From_Utf8(std::string_view bytes) {
  Text text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const Decoded decoded = Decode(bytes);
    if (decoded.Length == 0) {
      text += static_cast<char16_t>(0xDC00 + static_cast<std::uint8_t>(bytes[0]));
      bytes.remove_prefix(1);
    } else {
      Append_Code(text, decoded.Code);
      bytes.remove_prefix(decoded.Length);
    }
  }
  return text;
}

std::string To_Utf8(Text_View text) {
  return Encode(text,
                [](std::string& bytes, char32_t) { Append_Utf8(bytes, Replacement_Character); });
}

std::string To_Original_Bytes(Text_View text) {
  return Encode(text, [](std::string& bytes, char32_t surrogate) {
    if (surrogate >= 0xDC80 && surrogate <= 0xDCFF) {
      bytes += static_cast<char>(surrogate - 0xDC00);
    } else {
      Append_Utf8(bytes, Replacement_Character);
    }
  });
}

}  // namespace rivelt
