#include "platform/files/file_verbs.h"

#include <algorithm>
#include <exception>
#include <random>

#include "text/letter_case.h"
#include "text/primitives.h"
#include "text/utf8.h"

namespace rivelt {

void File_Verbs::Set_Root(Text_View path) try {
  const auto folder = Find(path, Kind::Folder);
  Root = folder ? Below(*folder, {}) : Text();
} catch (const std::exception&) {
  Root.clear();
}

Text File_Verbs::Below(Text_View folder, Text_View name) const {
  const bool is_open = folder.empty() || folder.back() == Separator;
  return Concatenate({folder, is_open ? Text_View() : Text_View(&Separator, 1), name});
}

Text File_Verbs::Name_Of(Text_View path) const {
  const std::size_t end = path.find_last_not_of(Separator) + 1;
  path = path.substr(0, end);
  return Text(path.substr(path.rfind(Separator) + 1));
}

Text File_Verbs::Temporary_Beside(const Text& path) const {
  static std::uint64_t number = std::uint64_t{std::random_device()()} << 32;
  const std::size_t folder = path.rfind(Separator) + 1;
  return Concatenate(
      {Text_View(path).substr(0, folder), Temporary_Prefix, From_Utf8(std::to_string(++number))});
}

Failure File_Verbs::Refused(Text_View path, Text_View words) const {
  constexpr Text_View long_path = u"\\\\?\\";
  // Where letter case does not count the program's path may have another than the disk.
  const bool is_below_root =
      !Root.empty() && Fold_Case(path.substr(0, Root.size())) == Fold_Case(Root);
  if (is_below_root) path.remove_prefix(Root.size());
  if (path.starts_with(long_path)) path.remove_prefix(long_path.size());
  Text shown(path);
  if (is_below_root) std::ranges::replace(shown, Separator, u'\\');
  return Failure(Concatenate({shown, u": ", words}));
}

}  // namespace rivelt
