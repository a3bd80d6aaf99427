#include "backup/backup_time.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <ctime>

#include "text/primitives.h"

namespace rivelt {
namespace {

constexpr Text_View Time_Form = u"0000-00-00 00.00.00";  // a digit for each 0

Text Written(const std::tm* time) {
  if (time == nullptr) throw Failure(u"The clock has no such time");
  std::array<char, 32> written{};
  const std::size_t length =
      std::strftime(written.data(), written.size(), "%Y-%m-%d %H.%M.%S", time);
  Text text(written.begin(), written.begin() + static_cast<std::ptrdiff_t>(length));
  if (!Is_Backup_Time(text)) throw Failure(u"The clock is after the year 9999");
  return text;
}

// As if the time were UTC, so that summer time does not matter.
Text A_Second_After(Text_View time) {
  using namespace std::chrono;
  const auto part = [&](std::size_t at) { return Round_Long(Text_Value(time.substr(at, 2))); };
  const auto day = year(part(0) * 100 + part(2)) / part(5) / part(8);
  const auto next = sys_days(day) + hours(part(11)) + minutes(part(14)) + seconds(part(17) + 1);
  const std::time_t count = static_cast<std::time_t>(next.time_since_epoch().count());
  return Written(std::gmtime(&count));
}

}  // namespace

bool Is_Backup_Time(Text_View text) {
  if (text.size() != Time_Form.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool is_digit = text[i] >= u'0' && text[i] <= u'9';
    if (Time_Form[i] == u'0' ? !is_digit : text[i] != Time_Form[i]) return false;
  }
  return true;
}

Text_View Time_In(Text_View name) {
  if (name.ends_with(Unfinished_Ending)) name.remove_suffix(Unfinished_Ending.size());
  return name;
}

Text Backup_Time_After(Text_View newest) {
  const std::time_t time = std::time(nullptr);
  const Text now = Written(std::localtime(&time));
  return now > newest ? now : A_Second_After(newest);
}

Text Backup_Time_Of(std::int64_t nanoseconds) {
  // Not every system knows a local time before 1970.
  const auto time =
      static_cast<std::time_t>(std::max<std::int64_t>(nanoseconds, 0) / 1'000'000'000);
  return Written(std::localtime(&time));
}

}  // namespace rivelt
