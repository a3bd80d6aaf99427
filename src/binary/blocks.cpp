#include "binary/blocks.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

#include "text/primitives.h"
#include "text/utf16.h"

namespace rivelt {
namespace {

// No real file nests deeper. Without a limit the text could grow with the square of the file.
constexpr std::size_t Deepest_Indent = 32;

// Whether a string with this character needs quotation marks.
bool Is_Special(char16_t unit) {
  constexpr Text_View others = u"()\"\\\u1680\u2028\u2029\u202F\u205F\u3000";
  return unit <= u' ' || (unit >= 0x7F && unit <= 0xA0) || (unit >= 0x2000 && unit <= 0x200A) ||
         others.find(unit) != Text_View::npos;
}

Text Hexadecimal(std::uint32_t number) {
  Text digits;
  for (int shift = 28; shift >= 0; shift -= 4) digits += u"0123456789abcdef"[number >> shift & 15];
  return digits;
}

struct Open_Block {
  std::uint32_t Number;
  Text_View Name;
  Text_View Holds;  // the rest, still to be read
  std::size_t End;
  bool Has_Lines = false;
};

class Block_Reader {
 public:
  Block_Reader(std::string_view bytes, std::size_t start, File_Kind file, Text output)
      : Bytes(bytes), At(start), Kinds(Kinds_In(file)), Output(std::move(output)) {
    Output.reserve(Bytes.size() / 2 * 3);
  }

  Text Run(Text_View outermost) {
    Open();
    if (Around.back().Name != outermost) Fail(At, u"is not the first block of such a file");
    if (Around.back().End != Bytes.size()) Fail(At, u"ends before the file does");
    while (!Around.empty()) Go_On();
    Write(Line_End);
    return std::move(Output);
  }

 private:
  void Open() {
    const std::size_t start = At;
    const std::size_t end = End();
    const auto number = Take_Number<std::uint32_t>();
    const auto size = Take_Number<std::uint32_t>();
    const auto kind = Kinds.find(number);
    if (kind == Kinds.end())
      throw Unreadable_At(start, Concatenate({u"block ", Hexadecimal(number), u" is not known"}));
    Write_Line_Start();
    Around.push_back({number, kind->second.Name, kind->second.Holds, At + size});
    if (size > end - At) Fail(start, u"reaches beyond the one around it");
    Write(Around.back().Name);
    const std::size_t label_length = Take_Number<std::uint8_t>();
    if (label_length != 0) Write_String(label_length);
    Write(u" (");
  }

  // Reads the innermost open block up to and including the head of the next block in it, or to its
  // end.
  void Go_On() {
    Open_Block& block = Around.back();
    while (!block.Holds.empty()) {
      const char16_t letter = block.Holds.front();
      const bool is_over = At == block.End;
      if (letter == u'b' || (letter == u'B' && !is_over)) {
        block.Holds.remove_prefix(letter == u'b' ? 1 : 0);
        block.Has_Lines = true;
        return Open();
      }
      block.Holds.remove_prefix(letter == u'?' && is_over ? 2 : 1);
      if (letter == u'*') {
        Take_Repeated(std::exchange(block.Holds, {}));
      } else if (letter != u'?' && letter != u'B') {
        Take_Value(letter);
      }
    }
    if (At != block.End) Fail(At, u"has bytes left after its values");
    const bool has_lines = block.Has_Lines;
    Around.pop_back();
    if (has_lines) Write_Line_Start();
    Write(has_lines ? u")" : u" )");
  }

  void Take_Repeated(Text_View letters) {
    for (std::uint32_t left = Last_Number; left > 0; --left) {
      for (const char16_t letter : letters) Take_Value(letter);
    }
  }

  void Take_Value(char16_t letter) {
    if (letter == u's') return Write_String(Take_Number<std::uint16_t>());
    Last_Number = Take_Number<std::uint32_t>();
    Write(u" ");
    if (letter == u'x') return Write(Hexadecimal(Last_Number));
    if (letter == u'u') return Write_Digits(Last_Number);
    if (letter == u'i') return Write_Digits(static_cast<std::int32_t>(Last_Number));
    Write_Fraction(std::bit_cast<float>(Last_Number));
  }

  void Write_Fraction(float number) {
    if (std::isinf(number)) Fail(At - sizeof(number), u"has an infinite number");
    if (std::isnan(number)) return Write(u"nan");
    const float size = std::abs(number);
    const bool has_exponent = size != 0 && (size < 0.0001F || size > 100000000.0F);
    Write_Digits(number, has_exponent ? std::chars_format::scientific : std::chars_format::fixed);
  }

  void Write_Digits(auto number, auto... format) {
    std::array<char, 32> digits;
    const char* end = std::to_chars(digits.begin(), digits.end(), number, format...).ptr;
    std::array<char16_t, digits.size()> units;
    std::copy(digits.cbegin(), end, units.begin());
    Write({units.data(), static_cast<std::size_t>(end - digits.data())});
  }

  void Write_String(std::size_t length) {
    const std::string_view bytes = Take(length * Unit_Size);
    Text text(length, u'\0');
    std::memcpy(text.data(), bytes.data(), bytes.size());
    Write(u" ");
    if (!text.empty() && std::ranges::none_of(text, Is_Special)) return Write(text);
    text = Replace_Text(Replace_Text(text, u"\\", u"\\\\"), u"\"", u"\\\"");
    Write(Concatenate({u"\"", text, u"\""}));
  }

  void Write_Line_Start() {
    Write(Line_End);
    Write(Text(std::min(Around.size(), Deepest_Indent), u'\t'));
  }

  void Write(Text_View units) {
    if (units.size() > Longest_Text - Output.size()) Fail(At, u"makes the text too long");
    Output += units;
  }

  template <class Number>
  Number Take_Number() {
    Number number;
    std::memcpy(&number, Take(sizeof(number)).data(), sizeof(number));
    return number;
  }

  std::string_view Take(std::size_t count) {
    if (count > End() - At) Fail(At, u"ends inside a value or the head of a block");
    return Bytes.substr(std::exchange(At, At + count), count);
  }

  std::size_t End() const { return Around.empty() ? Bytes.size() : Around.back().End; }

  [[noreturn]] void Fail(std::size_t byte, Text_View what) const {
    if (Around.empty()) throw Unreadable_At(byte, Concatenate({u"the file ", what}));
    const Open_Block& block = Around.back();
    const Text number = Hexadecimal(block.Number);
    throw Unreadable_At(byte, Concatenate({u"block ", number, u" ", block.Name, u" ", what}));
  }

  std::string_view Bytes;
  std::size_t At;
  const Block_Kinds& Kinds;
  Text Output;
  std::vector<Open_Block> Around;  // the outermost first
  std::uint32_t Last_Number = 0;
};

}  // namespace

Failure Unreadable_At(std::size_t byte, Text_View reason) {
  const Text place = Number_Text(static_cast<Double>(byte));
  return Failure(Concatenate({u"at byte", place, u": ", reason}));
}

Text Read_Blocks(std::string_view bytes, std::size_t start, File_Kind file, Text output) {
  const bool is_world = file == File_Kind::World;
  return Block_Reader(bytes, start, file, std::move(output))
      .Run(is_world ? u"Tr_Worldfile" : u"TrackDB");
}

}  // namespace rivelt
