#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <system_error>

#include "text/primitives.h"

namespace rivelt {
namespace {

constexpr bool Is_Digit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

constexpr char16_t Lower(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit | 0x20) : unit;
}

constexpr bool Is_Blank(char16_t unit) {
  return unit == u' ' || unit == u'\t' || unit == u'\n' || unit == u'\r';
}

// Walks the units of a number, over the blanks, tabs and line ends between them.
class Number_Reader {
 public:
  explicit Number_Reader(Text_View text) : Source(text) { Skip_Blanks(); }

  // The next unit of the number, 0 at the end of the text.
  char16_t Peek() const { return Next < Source.size() ? Source[Next] : u'\0'; }

  char16_t Take() {
    const char16_t unit = Source[Next++];
    Skip_Blanks();
    return unit;
  }

  Position End() const { return static_cast<Position>(Next); }

 private:
  void Skip_Blanks() {
    while (Next < Source.size() && Is_Blank(Source[Next])) ++Next;
  }

  Text_View Source;
  std::size_t Next = 0;
};

int Digit_Value(char16_t unit) {
  const char16_t lower = Lower(unit);
  if (Is_Digit(lower)) return lower - u'0';
  return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : 16;
}

std::optional<Double> Read_With_Base(Number_Reader& reader, int base) {
  if (Digit_Value(reader.Peek()) >= base) return std::nullopt;
  Double value = 0;
  while (Digit_Value(reader.Peek()) < base) value = value * base + Digit_Value(reader.Take());
  return value;
}

// The plain decimal form of what was read, and the power of ten of its first digit that is not 0.
struct Decimal_Form {
  void Add_Digit(char16_t digit) {
    Digits += static_cast<char>(digit);
    Has_Value = Has_Value || digit != u'0';
    if (Behind_Point) {
      if (!Has_Value) --Power;
    } else if (Has_Value) {
      ++Power;
    }
  }

  void Add_Point() {
    Digits += '.';
    Behind_Point = true;
  }

  std::string Digits;
  bool Behind_Point = false;
  bool Has_Value = false;
  std::int64_t Power = 0;
};

void Read_Mantissa(Number_Reader& reader, Decimal_Form& form) {
  while (Is_Digit(reader.Peek()) || (reader.Peek() == u'.' && !form.Behind_Point)) {
    const char16_t unit = reader.Take();
    if (unit == u'.') {
      form.Add_Point();
    } else {
      form.Add_Digit(unit);
    }
  }
}

// The exponent, saturated where no mantissa could bring the number back into range. Without digits
// after the letter there is none, and the reader stays before the letter.
std::int64_t Read_Exponent(Number_Reader& reader) {
  constexpr std::int64_t limit = std::int64_t{1} << 40;
  if (Lower(reader.Peek()) != u'e' && Lower(reader.Peek()) != u'd') return 0;
  Number_Reader ahead = reader;
  ahead.Take();
  const bool negative = ahead.Peek() == u'-';
  if (negative || ahead.Peek() == u'+') ahead.Take();
  if (!Is_Digit(ahead.Peek())) return 0;
  std::int64_t exponent = 0;
  while (Is_Digit(ahead.Peek())) {
    exponent = exponent * 10 + (ahead.Take() - u'0');
    if (exponent > limit) exponent = limit;
  }
  reader = ahead;
  return negative ? -exponent : exponent;
}

Double Converted(const Decimal_Form& form, std::int64_t exponent) {
  if (!form.Has_Value) return 0;
  const std::string digits = form.Digits + "e" + std::to_string(exponent);
  Double value = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (read.ec == std::errc()) return value;
  // Else it is nearer to 0 than any Double.
  return form.Power + exponent > 0 ? std::numeric_limits<Double>::infinity() : 0;
}

std::optional<Double> Read_Decimal(Number_Reader& reader) {
  const char16_t sign = reader.Peek();
  if (sign == u'+' || sign == u'-') reader.Take();
  Decimal_Form form;
  Read_Mantissa(reader, form);
  if (form.Digits.find_first_of("0123456789") == std::string::npos) return std::nullopt;
  const Double value = Converted(form, Read_Exponent(reader));
  return sign == u'-' ? -value : value;
}

// The base that a prefix at the start selects; the reader is then after the prefix.
int Read_Prefix(Number_Reader& reader) {
  if (reader.Peek() != u'&') return 10;
  Number_Reader ahead = reader;
  ahead.Take();
  const char16_t letter = Lower(ahead.Peek());
  if (letter != u'h' && letter != u'o') return 10;
  ahead.Take();
  reader = ahead;
  return letter == u'h' ? 16 : 8;
}

// Most numbers are a few digits and the blanks around them.
std::optional<Number_Reading> Read_Few_Digits(Text_View text) {
  constexpr std::size_t most_digits = 15;
  const auto skip_blanks = [&](std::size_t i) {
    while (i < text.size() && Is_Blank(text[i])) ++i;
    return i;
  };
  const std::size_t start = skip_blanks(0);
  std::int64_t value = 0;
  std::size_t i = start;
  for (; i < text.size() && Is_Digit(text[i]); ++i) {
    if (i - start == most_digits) return std::nullopt;
    value = value * 10 + (text[i] - u'0');
  }
  if (i == start) return std::nullopt;
  i = skip_blanks(i);
  const char16_t next = i < text.size() ? Lower(text[i]) : u'\0';
  if (Is_Digit(next) || next == u'.' || next == u'e' || next == u'd') return std::nullopt;
  return Number_Reading{static_cast<Double>(value), static_cast<Position>(i), true};
}

}  // namespace

Number_Reading Read_Number(Text_View text) {
  if (const auto reading = Read_Few_Digits(text)) return *reading;
  Number_Reader reader(text);
  const int base = Read_Prefix(reader);
  const std::optional<Double> value =
      base == 10 ? Read_Decimal(reader) : Read_With_Base(reader, base);
  return {value.value_or(0), reader.End(), value.has_value()};
}

}  // namespace rivelt
