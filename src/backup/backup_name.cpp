#include "backup/backup_name.h"

#include <array>
#include <cstddef>
#include <ctime>

namespace rivelt {
namespace {

constexpr Text_View Time_Form = u"0000-00-00 00.00.00";  // a digit for each 0

bool Has_Time_Form(Text_View text) {
  if (text.size() != Time_Form.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool is_digit = text[i] >= u'0' && text[i] <= u'9';
    if (Time_Form[i] == u'0' ? !is_digit : text[i] != Time_Form[i]) return false;
  }
  return true;
}

}  // namespace

std::optional<Backup_Name> Read_Backup_Name(Text_View name) {
  if (name.size() < Time_Form.size() + 2) return std::nullopt;
  const std::size_t blank = name.size() - Time_Form.size() - 1;
  const Text_View time = name.substr(blank + 1);
  if (name[blank] != u' ' || !Has_Time_Form(time)) return std::nullopt;
  return Backup_Name{Text(name.substr(0, blank)), Text(time)};
}

Text Backup_Time(int seconds_from_now) {
  const std::time_t time = std::time(nullptr) + seconds_from_now;
  std::array<char, 32> written{};
  const std::tm* local = std::localtime(&time);
  if (local == nullptr) throw Failure();
  const std::size_t length =
      std::strftime(written.data(), written.size(), "%Y-%m-%d %H.%M.%S", local);
  return Text(written.begin(), written.begin() + static_cast<std::ptrdiff_t>(length));
}

}  // namespace rivelt
