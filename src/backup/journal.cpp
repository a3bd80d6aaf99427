#include "backup/journal.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <string>

#include "text/primitives.h"

namespace rivelt {
namespace {

// The first line, the files with a tab between each two fields, the checksum of all lines above.
constexpr Text_View First_Line = u"Rivelt journal: ";
constexpr Text_View Nothing = u"-";

enum Field { Place, Source, Original_Size, Original_Checksum, New_Size, New_Checksum, Field_Count };

Text Hexadecimal(std::uint64_t number) {
  std::array<char, 16> digits{};
  return Text(digits.data(), std::to_chars(digits.begin(), digits.end(), number, 16).ptr);
}

std::uint64_t Number(Text_View digits) {
  const std::string narrow(digits.begin(), digits.end());
  std::uint64_t number = 0;
  const char* end = narrow.data() + narrow.size();
  if (std::from_chars(narrow.data(), end, number, 16).ptr != end) throw Failure(u"No journal");
  return number;
}

Text File_Line(const Journal_File& file) {
  std::array<Text, Field_Count> fields;
  fields[Place] = file.Place;
  fields[Source] = file.Source.empty() ? Text(Nothing) : file.Source;
  const auto put = [&](Field size, const std::optional<Content>& content) {
    fields[size] = content ? Hexadecimal(content->Size) : Text(Nothing);
    fields[size + 1] = content ? Hexadecimal(content->Checksum) : Text(Nothing);
  };
  put(Original_Size, file.Original);
  put(New_Size, file.New);
  Text line;
  for (const Text& field : fields) {
    if (field.find_first_of(u"\t\r\n") != Text::npos) {
      throw Failure(u"A name with a tab or a line end in it cannot be updated: " + field);
    }
    if (!line.empty()) line += u'\t';
    line += field;
  }
  return line;
}

Journal_File File_In(Text_View line) {
  std::array<Text_View, Field_Count> fields;
  for (Text_View& field : fields) {
    field = line.substr(0, line.find(u'\t'));
    line.remove_prefix(std::min(line.size(), field.size() + 1));
  }
  const auto content = [&](Field size) -> std::optional<Content> {
    if (fields[size] == Nothing) return std::nullopt;
    return Content{Number(fields[size]), Number(fields[size + 1])};
  };
  return {Text(fields[Place]), Text(fields[Source] == Nothing ? Text_View() : fields[Source]),
          content(Original_Size), content(New_Size)};
}

Text Checksum_Line(Text_View lines) {
  return Hexadecimal(Content_Of(lines).Checksum) + Text(Line_End);
}

}  // namespace

Text Journal_Text(const Journal& journal) {
  Text text = Concatenate({First_Line, journal.Made_By, Line_End});
  for (const Journal_File& file : journal.Files) text += File_Line(file) + Text(Line_End);
  return text + Checksum_Line(text);
}

std::optional<Journal> Read_Journal(Text_View text) {
  const std::size_t end =
      text.rfind(Line_End, text.size() - std::min(text.size(), Line_End.size() + 1));
  if (end == Text_View::npos) return std::nullopt;
  Text_View lines = text.substr(0, end + Line_End.size());
  if (text.substr(lines.size()) != Checksum_Line(lines)) return std::nullopt;
  const auto next_line = [&] {
    const Text_View line = lines.substr(0, lines.find(Line_End));
    lines.remove_prefix(line.size() + Line_End.size());
    return line;
  };
  const Text_View first = next_line();
  if (!first.starts_with(First_Line)) throw Failure(u"A journal of another version of Rivelt");
  Journal journal{Text(first.substr(First_Line.size())), {}};
  while (!lines.empty()) journal.Files.push_back(File_In(next_line()));
  return journal;
}

}  // namespace rivelt
