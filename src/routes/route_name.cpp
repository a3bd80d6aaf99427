#include "routes/route_name.h"

#include "routes/trk_file.h"
#include "text/primitives.h"
#include "text/reasons.h"

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
  return Naming_Lines(trk_text, [&] {
    const Position keyword = Find_After({}, 1, trk_text, u"Name");
    const Position open = Find_Text(keyword, trk_text, u"(");
    const Position close = Find_After(u"Name", open + 1, trk_text, u")");
    const Text_View name = Mid_Text(trk_text, open + 1, close - open - 1);
    return Text(Trim_Text(Replace_Text(name, {&Double_Quote, 1}, u"")));
  });
}

}  // namespace rivelt
