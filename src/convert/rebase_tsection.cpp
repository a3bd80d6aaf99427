#include "convert/rebase_tsection.h"

#include <optional>
#include <utility>
#include <vector>

#include "convert/section_record.h"
#include "text/primitives.h"
#include "text/reasons.h"
#include "text/rewritten_text.h"

namespace rivelt {
namespace {

constexpr Text_View Index_Keyword = u"SectionIdx";

class Tsection_Pass {
 public:
  Tsection_Pass(Text_View text, Long reserved_sections, Long reserved_shapes, const Log_Line& log)
      : Source(text),
        Output(text),
        Reserved_Sections(reserved_sections),
        Reserved_Shapes(reserved_shapes),
        Log(log) {}

  Rebased_Tsection Run() {
    Naming_Lines(Source, [&] {
      const Position sections_end = Rebase_Section_Records();
      const Position index_head = Find_After({}, sections_end, Source, Index_Keyword);
      const Position open = Find_After(Index_Keyword, index_head, Source, u"(");
      const Double record_count = Text_Value(Mid_Text(Source, open + 1, 20));
      Rebase_Path_Records(open);
      Log(Concatenate({u"Total of ", Number_Text(record_count), u" dynamic tracks"}));
    });
    return {Output.Finish(),
            Section_Delta.value_or(0),
            Shape_Delta.value_or(0),
            {Number_Set(Sections), Number_Set(Shapes)},
            std::move(Path_Sections)};
  }

 private:
  // Gives the end of the last one's number field.
  Position Rebase_Section_Records() {
    Position end = 1;
    while (const Position position = Find_Text(end, Source, u"SectionCurve")) {
      const Section_Field field = Read_Section_Field(Source, Find_Section_Field(Source, position));
      if (!Section_Delta)
        Section_Delta = First_Delta(Index_Keyword, field.Id, Reserved_Sections, field.Units);
      Sections.push_back(field.Id);
      Output.Replace(field.Units, Number_Text(field.Id + *Section_Delta));
      end = field.End;
    }
    return end;
  }

  void Rebase_Path_Records(Position position) {
    constexpr Text_View keyword = u"TrackPath";
    while ((position = Find_Text(position, Source, keyword)) != 0) {
      const Position open = Find_After(keyword, position, Source, u"(");
      position = Find_After(keyword, open, Source, u")");
      const Text_View record = Mid_Text(Source, open + 1, position - open - 1);
      // The blank that may have been before the ")" was trimmed off.
      Output.Replace(record, Rebased_Path(record) + u' ');
    }
  }

  // The fields of a path record: a shape id, a field that is not ours, then section ids.
  Text Rebased_Path(Text_View record) {
    const std::vector<Text_View> fields = Split_Text(Trim_Text(record));
    if (fields.empty()) throw Failure(u"nothing in the \"TrackPath\"", record.data());
    const Double shape_id = Text_Value(fields[0]);
    if (!Shape_Delta) Shape_Delta = First_Delta(u"ShapeIdx", shape_id, Reserved_Shapes, record);
    Shapes.push_back(shape_id);
    std::vector<Text> moved(fields.begin(), fields.end());
    moved[0] = Number_Text(shape_id + *Shape_Delta);
    for (std::size_t i = 2; i < fields.size(); ++i) {
      Path_Sections.push_back(Text_Value(fields[i]));
      moved[i] = Trim_Text(Number_Text(Path_Sections.back() + Section_Delta.value_or(0)));
    }
    return Join_Text(moved);
  }

  // What the first record of a kind moves by, and all others with it.
  Long First_Delta(Text_View what, Double id, Long reserved, Text_View field) {
    const Long delta = Round_Long(reserved - id, field.data());
    if (delta != 0) {
      Log(Concatenate({what, u" changed: ", Number_Text(id), u" -> ", Number_Text(reserved)}));
    }
    return delta;
  }

  Text_View Source;
  Rewritten_Text Output;
  Long Reserved_Sections;
  Long Reserved_Shapes;
  const Log_Line& Log;
  std::optional<Long> Section_Delta;
  std::optional<Long> Shape_Delta;
  std::vector<Double> Sections;
  std::vector<Double> Shapes;
  std::vector<Double> Path_Sections;
};

}  // namespace

Rebased_Tsection Rebase_Tsection(Text_View text, Long reserved_sections, Long reserved_shapes,
                                 const Log_Line& log) {
  return Tsection_Pass(text, reserved_sections, reserved_shapes, log).Run();
}

}  // namespace rivelt
