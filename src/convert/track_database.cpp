#include "convert/track_database.h"

#include <cmath>
#include <cstddef>
#include <optional>

#include "text/primitives.h"
#include "text/reasons.h"
#include "text/token_reader.h"

namespace rivelt {
namespace {

constexpr std::size_t Fields_Of_A_Section = 16;

// The number that is the whole field.
Double Only_Number(Text_View field) {
  const Number_Reading reading = Read_Number(field);
  if (!reading.Has_Digits || reading.End != static_cast<Position>(field.size()) ||
      std::isinf(reading.Value)) {
    throw Failure(Concatenate({u"\"", field, u"\" is not a number"}), field.data());
  }
  return reading.Value;
}

class Database_Reader {
 public:
  using Take = std::function<void(const Database_Number&)>;

  Database_Reader(Text_View text, const Take& take) : Tokens(text), Take_Number(take) {}

  void Run() {
    while (!Next_Token().Is_Word(u"TrackDB")) continue;
    Enter_Block(u"TrackDB");
    for (int depth = 1; depth > 0;) {
      const Token token = Next_Token();
      if (token.Of == Token::Kind::Open) ++depth;
      if (token.Of == Token::Kind::Close) --depth;
      if (token.Is_Word(u"TrVectorSections")) Read_Vector(token.Units);
      if (token.Is_Word(u"TrJunctionNode")) Read_Junction(token.Units);
    }
    Require_No_More_Numbers();
  }

 private:
  void Read_Vector(Text_View keyword) {
    Enter_Block(keyword);
    const Double count = Only_Number(Next_Field(keyword));
    std::size_t fields = 0;
    while (const auto field = Field_Or_End()) {
      const std::size_t place = fields++ % Fields_Of_A_Section;
      if (place == 0) Hand_Over(Database_Number::Kind::Section, *field);
      if (place == 1) Hand_Over(Database_Number::Kind::Shape, *field);
    }
    const std::size_t sections = fields / Fields_Of_A_Section;
    if (fields % Fields_Of_A_Section != 0 || static_cast<Double>(sections) != count) {
      throw Failure(u"the count of the \"TrVectorSections\" is not its own", keyword.data());
    }
  }

  void Read_Junction(Text_View keyword) {
    Enter_Block(keyword);
    Next_Field(keyword);
    Hand_Over(Database_Number::Kind::Junction, Next_Field(keyword));
    while (Field_Or_End()) continue;
  }

  // A surplus ")" ends the database early. It does no harm after the last of the numbers.
  void Require_No_More_Numbers() {
    for (Token token = Tokens.Next(); token.Of != Token::Kind::End; token = Tokens.Next()) {
      if (token.Is_Word(u"TrVectorSections") || token.Is_Word(u"TrJunctionNode")) {
        throw Failure(u"surplus brackets before this", token.Units.data());
      }
    }
  }

  void Hand_Over(Database_Number::Kind kind, Text_View field) {
    Take_Number({kind, Only_Number(field), field});
  }

  void Enter_Block(Text_View keyword) {
    if (Next_Token().Of != Token::Kind::Open) Miss(u"\"(\"", keyword);
  }

  Text_View Next_Field(Text_View keyword) {
    const auto field = Field_Or_End();
    if (!field) Miss(u"number", keyword);
    return *field;
  }

  [[noreturn]] static void Miss(Text_View what, Text_View keyword) {
    throw Failure(Concatenate({u"no ", what, u" after the \"", keyword, u"\""}), keyword.data());
  }

  // The next field of a block, nothing at the ")" of the block.
  std::optional<Text_View> Field_Or_End() {
    const Token token = Next_Token();
    if (token.Of == Token::Kind::Close) return std::nullopt;
    if (token.Of == Token::Kind::Word) return token.Units;
    throw Failure(Concatenate({token.Units, u" is not a number"}), token.Units.data());
  }

  // Only a database that is cut ends before its last ")".
  Token Next_Token() {
    const Token token = Tokens.Next();
    if (token.Of == Token::Kind::End) throw Failure(u"the text ends too early", token.Units.data());
    return token;
  }

  Token_Reader Tokens;
  const Take& Take_Number;
};

}  // namespace

void Read_Track_Database(Text_View text, const std::function<void(const Database_Number&)>& take) {
  Naming_Lines(text, [&] { Database_Reader(text, take).Run(); });
}

}  // namespace rivelt
