#include "platform/linux/registry_text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "text/letter_case.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

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

// What follows a backslash: a control character by its letter, a unit by its number, or any
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

Registry_Value Take_Data(std::string_view line) {
  Long type = Registry_String;
  if (Take(line, "str(")) {
    type = static_cast<Long>(Take_Number(line, 8, 16).value_or(0));
    if (!Take(line, "):")) return {};
  }
  auto text = Take(line, "\"") ? Take_Text(line, '"') : std::nullopt;
  if (!text) return {};
  return {type, To_Original_Bytes(*text += u'\0')};
}

void Read_Value(std::string_view line, Registry_Values& values) {
  std::optional<Text> name;
  if (Take(line, "@")) {
    name.emplace();
  } else if (Take(line, "\"")) {
    name = Take_Text(line, '"');
  }
  if (!name || !Take(line, "=")) return;
  values.insert_or_assign(Fold_Case(*name), Take_Data(line));
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
      Read_Value(line, *values);
    }
  }
  return values;
}

const Registry_Value* Find_Value(const Registry_Values& values, std::string_view name) {
  const auto found = values.find(Fold_Case(From_Utf8(name)));
  return found == values.end() ? nullptr : &found->second;
}

}  // namespace rivelt
