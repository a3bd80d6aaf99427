#include "text/token_reader.h"

#include <algorithm>
#include <array>

#include "text/primitives.h"

namespace rivelt {
namespace {

constexpr std::array<Text_View, 3> Comments = {u"_SKIP", u"_INFO", u"Comment"};

constexpr bool Is_Blank(char16_t unit) {
  return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n';
}

constexpr bool Ends_Word(char16_t unit) {
  return Is_Blank(unit) || unit == u'(' || unit == u')';
}

}  // namespace

Text_View Without_Blanks(Text_View text) {
  const std::size_t first = text.find_first_not_of(Blanks);
  if (first == Text_View::npos) return {};
  return text.substr(first, text.find_last_not_of(Blanks) + 1 - first);
}

bool Token::Is_Word(Text_View word) const {
  return Of == Kind::Word && Units.size() == word.size() && Find_Text(1, Units, word) == 1;
}

Token Token_Reader::Next() {
  while (true) {
    const Token token = Next_Of_All();
    if (!std::ranges::any_of(Comments, [&](Text_View tag) { return token.Is_Word(tag); })) {
      return token;
    }
    const std::size_t after_tag = At;
    if (Next_Of_All().Of != Token::Kind::Open) {
      At = after_tag;
      return token;
    }
    Pass_Over_Block();
  }
}

Token Token_Reader::Next_Of_All() {
  while (At < Source.size() && Is_Blank(Source[At])) ++At;
  if (At == Source.size()) return Take(Token::Kind::End, 0);
  if (Source[At] == u'(') return Take(Token::Kind::Open, 1);
  if (Source[At] == u')') return Take(Token::Kind::Close, 1);
  if (const std::size_t length = Length_Of_Quoted()) return Take(Token::Kind::Quoted, length);
  const auto end =
      std::find_if(Source.begin() + static_cast<std::ptrdiff_t>(At), Source.end(), Ends_Word);
  return Take(Token::Kind::Word, static_cast<std::size_t>(end - Source.begin()) - At);
}

Token Token_Reader::Take(Token::Kind kind, std::size_t count) {
  const Token token{kind, Source.substr(At, count)};
  At += count;
  return token;
}

std::size_t Token_Reader::Length_Of_Quoted() const {
  if (Source[At] != Double_Quote) return 0;
  for (std::size_t i = At + 1; i < Source.size(); ++i) {
    if (Source[i] == Double_Quote) return i + 1 - At;
    if (Source[i] == u'\\') ++i;
    if (i == Source.size() || Source[i] == u'\r' || Source[i] == u'\n') return 0;
  }
  return 0;
}

void Token_Reader::Pass_Over_Block() {
  for (int depth = 1; depth > 0;) {
    const Token::Kind kind = Next_Of_All().Of;
    if (kind == Token::Kind::End) return;
    if (kind == Token::Kind::Open) ++depth;
    if (kind == Token::Kind::Close) --depth;
  }
}

}  // namespace rivelt
