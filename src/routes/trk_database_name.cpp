#include "routes/route_name.h"
#include "routes/trk_file.h"
#include "system/places.h"
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

std::vector<Text> Database_Names(const Folder& route_folder) {
  const auto name = Trk_Database_Name(Trk_Text(route_folder).value_or(u""));
  if (!name) return {};
  std::vector<Text> names;
  names.reserve(places::Database_Endings.size());
  for (const Text_View ending : places::Database_Endings)
    names.push_back(Concatenate({*name, ending}));
  return names;
}

}  // namespace rivelt
