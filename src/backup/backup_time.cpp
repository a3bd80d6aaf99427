#include "backup/backup_time.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <ctime>

#include "text/primitives.h"

namespace rivelt {
namespace {

constexpr Text_View Time_Form = u"0000-00-00 00.00.00";  // a digit for each 0

Text Written(const std::tm& time) {
  std::array<char, 32> written{};
  const std::size_t length =
      std::strftime(written.data(), written.size(), "%Y-%m-%d %H.%M.%S", &time);
  Text text(written.begin(), written.begin() + static_cast<std::ptrdiff_t>(length));
  if (!Is_Backup_Time(text)) throw Failure(u"The clock is after the year 9999");
  return text;
}

Text Local(std::time_t time) {
  const std::tm* local = std::localtime(&time);
  if (local == nullptr) throw Failure(u"The clock has no such time");
  return Written(*local);
}

int Part(Text_View time, std::size_t at, std::size_t count) {
  return Round_Long(Text_Value(time.substr(at, count)));
}

// As if the time were UTC, so that summer time does not matter.
Text A_Second_After(Text_View time) {
  using namespace std::chrono;
  const auto day = year(Part(time, 0, 4)) / Part(time, 5, 2) / Part(time, 8, 2);
  const sys_seconds next = sys_days(day) + hours(Part(time, 11, 2)) + minutes(Part(time, 14, 2)) +
                           seconds(Part(time, 17, 2) + 1);
  const auto midnight = floor<days>(next);
  const year_month_day date(midnight);
  const hh_mm_ss clock(next - midnight);
  std::tm parts{};
  parts.tm_year = static_cast<int>(date.year()) - 1900;
  parts.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
  parts.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
  parts.tm_hour = static_cast<int>(clock.hours().count());
  parts.tm_min = static_cast<int>(clock.minutes().count());
  parts.tm_sec = static_cast<int>(clock.seconds().count());
  return Written(parts);
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
  const Text now = Local(std::time(nullptr));
  return now > newest ? now : A_Second_After(newest);
}

Text Backup_Time_Of(std::int64_t nanoseconds) {
  return Local(static_cast<std::time_t>(nanoseconds / 1'000'000'000));
}

}  // namespace rivelt
