#include "platform/linux/registry_text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "text/letter_case.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

constexpr Long Type_Expandable_String = 2;
constexpr Long Type_Binary = 3;
constexpr Long Type_Number = 4;
constexpr Long Type_Strings = 7;

std::string_view Take_Line(std::string_view& file) {
  std::string_view line = file.substr(0, file.find('\n'));
  file.remove_prefix(std::min(file.size(), line.size() + 1));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

bool Take(std::string_view& line, std::string_view expected) {
  if (!line.starts_with(expected)) return false;
  line.remove_prefix(expected.size());
  return true;
}

// A number of at most so many digits at the start of the line.
std::optional<std::uint32_t> Take_Number(std::string_view& line, std::size_t most, int base) {
  const std::string_view digits = line.substr(0, most);
  std::uint32_t number = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
  if (error != std::errc()) return std::nullopt;
  line.remove_prefix(static_cast<std::size_t>(end - digits.data()));
  return number;
}

// What stands behind a backslash: a control character by its letter, a unit by its number, or any
// other character for itself.
void Take_Escape(std::string_view& line, Text& text) {
  constexpr std::string_view letters = "abefnrtv";
  constexpr char16_t controls[] = u"\a\b\x1B\f\n\r\t\v";
  if (const auto octal = Take_Number(line, 3, 8)) {
    text += static_cast<char16_t>(*octal);
    return;
  }
  const char letter = line.front();
  const std::size_t control = letters.find(letter);
  if (control != std::string_view::npos) {
    text += controls[control];
  } else if (static_cast<unsigned char>(letter) < 0x80) {
    text += static_cast<char16_t>(letter);
  } else {
    return;  // the first byte of a character that stands for itself
  }
  line.remove_prefix(1);
  if (letter != 'x') return;
  if (const auto unit = Take_Number(line, 4, 16)) text.back() = static_cast<char16_t>(*unit);
}

// The text up to the character that ends it, which is taken off the line as well. None if the line
// ends first.
std::optional<Text> Take_Text(std::string_view& line, char end) {
  const char stops[] = {'\\', end};
  Text text;
  for (;;) {
    const std::size_t stop = line.find_first_of({stops, 2});
    if (stop == std::string_view::npos) return std::nullopt;
    text += From_Utf8(line.substr(0, stop));
    const bool is_end = line[stop] == end;
    line.remove_prefix(stop + 1);
    if (is_end) return text;
    if (line.empty()) return std::nullopt;
    Take_Escape(line, text);
  }
}

void Take_Blanks(std::string_view& line) {
  line.remove_prefix(std::min(line.size(), line.find_first_not_of(" \t")));
}

// Bytes between commas, over as many lines as end in a backslash.
std::optional<std::string> Take_Bytes(std::string_view line, std::string_view& file) {
  std::string bytes;
  for (;;) {
    Take_Blanks(line);
    if (line == "\\") {
      line = Take_Line(file);
      continue;
    }
    if (line.empty()) return bytes;
    const auto byte = Take_Number(line, 2, 16);
    if (!byte) return std::nullopt;
    bytes += static_cast<char>(*byte);
    Take_Blanks(line);
    if (!line.empty() && line != "\\" && !Take(line, ",")) return std::nullopt;
  }
}

bool Is_String(Long type) {
  return type == Registry_String || type == Type_Expandable_String || type == Type_Strings;
}

Registry_Value String_Value(Long type, Text text) {
  if (!text.empty() && text.back() != 0) text += u'\0';
  return {type, To_Original_Bytes(text)};
}

Registry_Value Value_Of_Bytes(Long type, std::string bytes) {
  if (!Is_String(type)) return {type, std::move(bytes)};
  Text text;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto low = static_cast<unsigned char>(bytes[i]);
    const auto high = static_cast<unsigned char>(bytes[i + 1]);
    text += static_cast<char16_t>(low | (high << 8));
  }
  return String_Value(type, std::move(text));
}

// The type in brackets, if there is one, and the colon.
std::optional<Long> Take_Type(std::string_view& line, Long type_without_brackets) {
  if (Take(line, ":")) return type_without_brackets;
  if (!Take(line, "(")) return std::nullopt;
  const auto type = Take_Number(line, 8, 16);
  if (!type || !Take(line, "):")) return std::nullopt;
  return static_cast<Long>(*type);
}

std::optional<Registry_Value> Take_String(std::string_view line, Long type) {
  if (!Take(line, "\"")) return std::nullopt;
  auto text = Take_Text(line, '"');
  if (!text) return std::nullopt;
  return String_Value(type, std::move(*text += u'\0'));
}

std::optional<Registry_Value> Take_Data(std::string_view line, std::string_view& file) {
  if (Take(line, "hex")) {
    const auto type = Take_Type(line, Type_Binary);
    auto bytes = type ? Take_Bytes(line, file) : std::nullopt;
    if (!bytes) return std::nullopt;
    return Value_Of_Bytes(*type, std::move(*bytes));
  }
  if (Take(line, "dword:")) {
    const auto number = Take_Number(line, 8, 16);
    if (!number) return std::nullopt;
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(*number >> shift);
    return Registry_Value{Type_Number, std::move(bytes)};
  }
  const auto type = Take(line, "str") ? Take_Type(line, Registry_String) : Registry_String;
  return type ? Take_String(line, *type) : std::nullopt;
}

void Read_Value(std::string_view line, std::string_view& file, Registry_Values& values) {
  std::optional<Text> name;
  if (Take(line, "@")) {
    name.emplace();
  } else if (Take(line, "\"")) {
    name = Take_Text(line, '"');
  }
  if (!name || !Take(line, "=")) return;
  if (auto value = Take_Data(line, file))
    values.insert_or_assign(Fold_Case(*name), std::move(*value));
}

}  // namespace

std::optional<Registry_Values> Read_Registry_Key(std::string_view file, std::string_view key) {
  const Text wanted = Fold_Case(From_Utf8(key));
  std::optional<Registry_Values> values;
  bool is_inside = false;
  while (!file.empty()) {
    std::string_view line = Take_Line(file);
    if (Take(line, "[")) {
      const auto name = Take_Text(line, ']');
      is_inside = name && name->size() == wanted.size() && Fold_Case(*name) == wanted;
      if (is_inside && !values) values.emplace();
    } else if (is_inside) {
      Read_Value(line, file, *values);
    }
  }
  return values;
}

const Registry_Value* Find_Value(const Registry_Values& values, std::string_view name) {
  const auto found = values.find(Fold_Case(From_Utf8(name)));
  return found == values.end() ? nullptr : &found->second;
}

}  // namespace rivelt
