#include <utility>

#include "routes/route_name.h"
#include "routes/trk_file.h"
#include "system/places.h"
#include "text/letter_case.h"
#include "text/primitives.h"
#include "text/token_reader.h"

namespace rivelt {
namespace {

// The text inside the brackets, the first of which has just been read.
std::optional<Text_View> Inside_Brackets(Token_Reader& tokens) {
  Token token = tokens.Next();
  const Text_View first = token.Units;
  if (token.Of == Token::Kind::Quoted) {
    if (tokens.Next().Of != Token::Kind::Close) return std::nullopt;
    return first.substr(1, first.size() - 2);
  }
  std::size_t length = 0;
  for (; token.Of == Token::Kind::Word; token = tokens.Next()) {
    length = static_cast<std::size_t>(token.Units.data() + token.Units.size() - first.data());
  }
  if (token.Of != Token::Kind::Close) return std::nullopt;
  return Text_View(first.data(), length);
}

bool Is_Plain_Name(Text_View name) {
  return !name.empty() && name.find_first_of(u"\\/:\"") == Text_View::npos;
}

// The name without its ending of the only track database in the folder.
std::optional<Text> Only_Track_Database(const Folder& folder) {
  std::optional<Text> name;
  const auto files = folder.Files();
  for (const auto& file : files) {
    Text file_name = file->name();
    if (Fold_Case(Right_Text(file_name, 4)) != places::Database_Endings[0]) continue;
    if (name) return std::nullopt;
    name = Left_Text(file_name, static_cast<Position>(file_name.size()) - 4);
  }
  return name;
}

}  // namespace

std::optional<Text> Trk_Database_Name(Text_View trk_text) {
  Token_Reader tokens(trk_text);
  for (Token token = tokens.Next(); token.Of != Token::Kind::End;) {
    const bool is_keyword = token.Is_Word(u"FileName");
    token = tokens.Next();
    if (!is_keyword || token.Of != Token::Kind::Open) continue;
    const auto name = Inside_Brackets(tokens);
    if (!name || !Is_Plain_Name(Trim_Text(*name))) return std::nullopt;
    return Text(Trim_Text(*name));
  }
  return std::nullopt;
}

std::vector<std::unique_ptr<File>> Track_Databases(File_System_Object& files,
                                                   const Text& route_path) {
  const auto folder = files.GetFolder(route_path);
  const auto find = [&](Text_View name, Text_View ending) {
    return files.FindFile(Concatenate({route_path, u"\\", name, ending}));
  };
  auto name = Trk_Database_Name(Trk_Text(*folder).value_or(u""));
  if (!name || !find(*name, places::Database_Endings[0])) name = Only_Track_Database(*folder);
  std::vector<std::unique_ptr<File>> databases;
  if (!name) return databases;
  for (const Text_View ending : places::Database_Endings) {
    if (auto file = find(*name, ending)) databases.push_back(std::move(file));
  }
  return databases;
}

}  // namespace rivelt
