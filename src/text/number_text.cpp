#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "text/primitives.h"

namespace rivelt {
namespace {

constexpr int Significant_Digits = 15;
constexpr Double First_Exponent_Form = 1e15;

// The decimal digits of a number, d.ddd times ten to the power of Exponent, no zeros at their end.
struct Decimal {
  std::string Digits;
  int Exponent = 0;
};

Decimal To_Decimal(Double magnitude) {
  char buffer[40];
  const auto written = std::to_chars(buffer, buffer + sizeof buffer, magnitude,
                                     std::chars_format::scientific, Significant_Digits - 1);
  const std::string_view form(buffer, static_cast<std::size_t>(written.ptr - buffer));
  const std::size_t e = form.find('e');
  Decimal decimal;
  decimal.Digits = form.substr(0, 1);
  decimal.Digits += form.substr(2, e - 2);
  decimal.Digits.erase(decimal.Digits.find_last_not_of('0') + 1);
  const std::size_t power = form[e + 1] == '+' ? e + 2 : e + 1;
  std::from_chars(form.data() + power, form.data() + form.size(), decimal.Exponent);
  return decimal;
}

std::string Exponent_Form(const Decimal& decimal) {
  std::string form = decimal.Digits;
  if (form.size() > 1) form.insert(1, 1, '.');
  return form.append("E+").append(std::to_string(decimal.Exponent));
}

std::string Plain_Form(const Decimal& decimal) {
  std::string form = decimal.Digits;
  const int whole = decimal.Exponent + 1;
  if (whole <= 0) {
    form.insert(0, static_cast<std::size_t>(-whole), '0');
    return form.insert(0, 1, '.');
  }
  const auto whole_digits = static_cast<std::size_t>(whole);
  if (form.size() > whole_digits) return form.insert(whole_digits, 1, '.');
  form.resize(whole_digits, '0');
  return form;
}

std::string Magnitude_Text(Double magnitude) {
  if (magnitude < First_Exponent_Form && magnitude == std::floor(magnitude)) {
    return std::to_string(static_cast<std::int64_t>(magnitude));
  }
  const Decimal decimal = To_Decimal(magnitude);
  return decimal.Exponent >= Significant_Digits ? Exponent_Form(decimal) : Plain_Form(decimal);
}

}  // namespace

Text Number_Text(Double number) {
  const std::string written = (number < 0 ? '-' : ' ') + Magnitude_Text(std::fabs(number));
  return Text(written.begin(), written.end());
}

}  // namespace rivelt
