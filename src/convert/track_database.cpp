#include "convert/track_database.h"

#include <cstddef>
#include <optional>

#include "convert/section_record.h"
#include "text/token_reader.h"

namespace rivelt {
namespace {

constexpr std::size_t Fields_Of_A_Section = 16;

class Database_Reader {
 public:
  using Take = std::function<void(const Database_Number&)>;

  Database_Reader(Text_View text, const Take& take) : Tokens(text), Take_Number(take) {}

  void Run() {
    while (!Next_Token().Is_Word(u"TrackDB")) continue;
    Enter_Block();
    for (int depth = 1; depth > 0;) {
      const Token token = Next_Token();
      if (token.Of == Token::Kind::Open) ++depth;
      if (token.Of == Token::Kind::Close) --depth;
      if (token.Is_Word(u"TrVectorSections")) Read_Vector();
      if (token.Is_Word(u"TrJunctionNode")) Read_Junction();
    }
    Require_No_More_Numbers();
  }

 private:
  void Read_Vector() {
    Enter_Block();
    const Double count = Only_Number(Next_Field());
    std::size_t fields = 0;
    while (const auto field = Field_Or_End()) {
      const std::size_t place = fields++ % Fields_Of_A_Section;
      if (place == 0) Hand_Over(Database_Number::Kind::Section, *field);
      if (place == 1) Hand_Over(Database_Number::Kind::Shape, *field);
    }
    const std::size_t sections = fields / Fields_Of_A_Section;
    if (fields % Fields_Of_A_Section != 0) throw Failure();
    if (static_cast<Double>(sections) != count) throw Failure();
  }

  void Read_Junction() {
    Enter_Block();
    Next_Field();
    Hand_Over(Database_Number::Kind::Junction, Next_Field());
    while (Field_Or_End()) continue;
  }

  // A surplus ")" ends the database early. It does no harm after the last of the numbers.
  void Require_No_More_Numbers() {
    for (Token token = Tokens.Next(); token.Of != Token::Kind::End; token = Tokens.Next()) {
      if (token.Is_Word(u"TrVectorSections") || token.Is_Word(u"TrJunctionNode")) throw Failure();
    }
  }

  void Hand_Over(Database_Number::Kind kind, Text_View field) {
    Take_Number({kind, Only_Number(field), field});
  }

  void Enter_Block() {
    if (Next_Token().Of != Token::Kind::Open) throw Failure();
  }

  Text_View Next_Field() {
    const auto field = Field_Or_End();
    if (!field) throw Failure();
    return *field;
  }

  // The next field of a block, nothing at the ")" of the block.
  std::optional<Text_View> Field_Or_End() {
    const Token token = Next_Token();
    if (token.Of == Token::Kind::Close) return std::nullopt;
    if (token.Of != Token::Kind::Word) throw Failure();
    return token.Units;
  }

  // Only a database that is cut ends before its last ")".
  Token Next_Token() {
    const Token token = Tokens.Next();
    if (token.Of == Token::Kind::End) throw Failure();
    return token;
  }

  Token_Reader Tokens;
  const Take& Take_Number;
};

}  // namespace

void Read_Track_Database(Text_View text, const std::function<void(const Database_Number&)>& take) {
  Database_Reader(text, take).Run();
}

}  // namespace rivelt
