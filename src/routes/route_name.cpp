#include "routes/route_name.h"

#include "routes/trk_file.h"
#include "text/primitives.h"

namespace rivelt {

std::optional<Text> Trk_Text(const Folder& route_folder) {
  const auto files = route_folder.Files();
  for (const auto& file : files) {
    if (Upper_Text(Right_Text(file->name(), 4)) != u".TRK") continue;
    return file->OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  }
  return std::nullopt;
}

Text Route_Display_Name(Text_View trk_text) {
  Position position = Find_Text(1, trk_text, u"Name");
  position = Find_Text(position, trk_text, u"(");
  const Text_View rest = Mid_Text(trk_text, position + 1);
  position = Find_Text(1, rest, u")");
  const Text name = Replace_Text(Left_Text(rest, position - 1), {&Double_Quote, 1}, u"");
  return Text(Trim_Text(name));
}

}  // namespace rivelt
