// The words, brackets and quoted texts of a file, for what must not be misled by a name that holds
// a keyword or a bracket.

#pragma once

#include <cstddef>

#include "text/text.h"

namespace rivelt {

inline constexpr Text_View Blanks = u" \t\r\n";

// The text without the blanks, tabs and line ends at its two ends.
Text_View Without_Blanks(Text_View text);

struct Token {
  enum class Kind { Word, Quoted, Open, Close, End };

  // In any letter case.
  bool Is_Word(Text_View word) const;

  Kind Of = Kind::End;
  Text_View Units;  // a view into the text, with its quotation marks
};

// Reads on from token to token. A quoted text begins with a quotation mark after a blank or bracket
// and ends with the next one on its line that no backslash precedes; where there is none, the mark
// belongs to a word. The blocks of "_SKIP", "_INFO" and "Comment" are passed over; one that nothing
// closes goes up to the end.
class Token_Reader {
 public:
  explicit Token_Reader(Text_View text) : Source(text) {}

  Token Next();

 private:
  Token Take(Token::Kind kind, std::size_t count);
  Token Next_Of_All();
  std::size_t Length_Of_Quoted() const;
  void Pass_Over_Block();

  Text_View Source;
  std::size_t At = 0;
};

}  // namespace rivelt
