#include "text/reasons.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "text/primitives.h"

namespace rivelt {
namespace {

bool Is_In(Text_View text, const char16_t* place) {
  constexpr std::less_equal<> not_after;  // in every text: pointers into two of them have no order
  return place != nullptr && not_after(text.data(), place) &&
         not_after(place, text.data() + text.size());
}

Text Line_Of(Text_View text, const char16_t* place) {
  return u"line" + Number_Text(static_cast<Double>(std::count(text.data(), place, u'\n') + 1));
}

// Two ASCII characters for the first unit: a text in an encoding of 8 bits was read as UTF-16.
bool Is_Narrow(Text_View text) {
  const auto is_ascii = [](int byte) { return byte >= 0x20 && byte < 0x7F; };
  return !text.empty() && is_ascii(text[0] & 0xFF) && is_ascii(text[0] >> 8);
}

}  // namespace

Position Find_After(Text_View keyword, Position start, Text_View text, Text_View target) {
  if (const Position found = Find_Text(start, text, target)) return found;
  Text reason = Concatenate({u"no \"", target, u"\""});
  if (!keyword.empty()) reason += Concatenate({u" after the \"", keyword, u"\""});
  throw Failure(std::move(reason), Mid_Text(text, start).data(), keyword.data());
}

Failure With_Lines(Text_View text, const Failure& failure) {
  if (Is_Narrow(text)) return Failure(u"this is not a text in UTF-16");
  if (!Is_In(text, failure.Place())) return failure;
  const Text line = Line_Of(text, failure.Place());
  Text reason = Concatenate({line, u": ", failure.Reason()});
  if (Is_In(text, failure.Earlier_Place())) {
    const Text earlier = Line_Of(text, failure.Earlier_Place());
    if (earlier != line) reason += u" of " + earlier;
  }
  return Failure(std::move(reason));
}

}  // namespace rivelt
