#include "backup/journal.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <string>

#include "text/primitives.h"

namespace rivelt {
namespace {

// The first line, the files with a tab between each two fields, the checksum of all lines above.
constexpr Text_View First_Line = u"Rivelt journal 1";
constexpr Text_View Changed_Mark = u"changed since the check";
constexpr Text_View Twin_Mark = u"one of two";
constexpr Text_View Nothing = u"-";
constexpr int Hexadecimal = 16;

enum Field {
  Original_Place,
  Original_Size,
  Original_Checksum,
  New_Place,
  New_Size,
  New_Checksum,
  Source,
  Mark,
  Twin,
  Field_Count
};

Text Digits(std::uint64_t number, int base) {
  std::array<char, 20> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, base).ptr;
  return Text(buffer.data(), end);
}

std::optional<std::uint64_t> Number(Text_View digits, int base) {
  std::string narrow;
  for (const char16_t unit : digits) narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
  std::uint64_t number = 0;
  const char* end = narrow.data() + narrow.size();
  const auto read = std::from_chars(narrow.data(), end, number, base);
  if (narrow.empty() || read.ec != std::errc() || read.ptr != end) return std::nullopt;
  return number;
}

std::optional<Content> Content_In(Text_View size, Text_View checksum) {
  const auto bytes = Number(size, 10);
  const auto sum = Number(checksum, Hexadecimal);
  if (!bytes || !sum) return std::nullopt;
  return Content{*bytes, *sum};
}

Text File_Line(const Journal_File& file) {
  std::array<Text, Field_Count> fields;
  fields[Original_Place] = file.Original_Place;
  fields[New_Place] = file.New_Place;
  fields[Source] = file.Source;
  if (file.Changed_Since_Check) fields[Mark] = Changed_Mark;
  if (file.Has_Twin) fields[Twin] = Twin_Mark;
  const auto put = [&](Field size, const std::optional<Content>& content) {
    fields[size] = content ? Digits(content->Size, 10) : Text(Nothing);
    fields[size + 1] = content ? Digits(content->Checksum, Hexadecimal) : Text(Nothing);
  };
  put(Original_Size, file.Original);
  put(New_Size, file.New);
  Text line;
  for (const Text& field : fields) {
    if (field.find_first_of(u"\t\r\n") != Text::npos) throw Failure();
    if (!line.empty()) line += u'\t';
    line += field.empty() ? Nothing : Text_View(field);
  }
  return line;
}

std::optional<Journal_File> File_In(Text_View line) {
  std::array<Text_View, Field_Count> fields;
  for (Text_View& field : fields) {
    const std::size_t tab = line.find(u'\t');
    const bool is_last = &field == &fields.back();
    if ((tab == Text_View::npos) != is_last) return std::nullopt;
    field = line.substr(0, tab);
    line.remove_prefix(is_last ? line.size() : tab + 1);
  }
  const auto text = [&](Field field) {
    return fields[field] == Nothing ? Text() : Text(fields[field]);
  };
  return Journal_File{text(Original_Place),
                      Content_In(fields[Original_Size], fields[Original_Checksum]),
                      text(New_Place),
                      Content_In(fields[New_Size], fields[New_Checksum]),
                      text(Source),
                      fields[Mark] == Changed_Mark,
                      fields[Twin] == Twin_Mark};
}

Text Checksum_Line(Text_View lines) {
  return Digits(Content_Of(lines).Checksum, Hexadecimal);
}

}  // namespace

Text Journal_Text(const Journal& journal) {
  Text text = Concatenate({First_Line, Line_End});
  for (const Journal_File& file : journal) text += File_Line(file) + Text(Line_End);
  return Concatenate({text, Checksum_Line(text), Line_End});
}

std::optional<Journal> Read_Journal(Text_View text) {
  if (!text.starts_with(First_Line) || !text.ends_with(Line_End)) return std::nullopt;
  text.remove_suffix(Line_End.size());
  const std::size_t last = text.rfind(Line_End);
  if (last == Text_View::npos) return std::nullopt;
  Text_View lines = text.substr(0, last + Line_End.size());
  if (text.substr(lines.size()) != Checksum_Line(lines)) return std::nullopt;
  Journal journal;
  while (true) {
    lines.remove_prefix(lines.find(Line_End) + Line_End.size());
    if (lines.empty()) return journal;
    const auto file = File_In(lines.substr(0, lines.find(Line_End)));
    if (!file) return std::nullopt;
    journal.push_back(*file);
  }
}

}  // namespace rivelt
