#include "convert/rebase_tsection.h"

#include <optional>
#include <vector>

#include "convert/section_record.h"
#include "text/primitives.h"
#include "text/rewritten_text.h"

namespace rivelt {
namespace {

class Tsection_Pass {
 public:
  Tsection_Pass(Text_View text, Long reserved_sections, Long reserved_shapes, const Log_Line& log)
      : Rest(text),
        Output(text),
        Reserved_Sections(reserved_sections),
        Reserved_Shapes(reserved_shapes),
        Log(log) {}

  Rebased_Tsection Run() {
    Rebase_Section_Records();
    const Position index_head = Find_Text(Find_Text(1, Rest, u"SectionIdx"), Rest, u"(");
    const Double record_count = Text_Value(Mid_Text(Rest, index_head + 1, 20));
    Rebase_Path_Records(index_head);
    Log(Concatenate({u"Total of ", Number_Text(record_count), u" dynamic tracks"}));
    return {Output.Finish(),
            Section_Delta.value_or(0),
            Shape_Delta.value_or(0),
            {Number_Set(Sections), Number_Set(Shapes)},
            std::move(Path_Sections)};
  }

 private:
  void Rebase_Section_Records() {
    Position position = Find_Text(1, Rest, u"SectionCurve");
    while (position > 0) {
      const Position close = Find_Section_Field(Rest, position);
      const Section_Field field = Read_Section_Field(Rest, close);
      if (!Section_Delta) Section_Delta = First_Delta(u"SectionIdx", field.Id, Reserved_Sections);
      Sections.push_back(field.Id);
      Output.Replace(Mid_Text(Rest, close + 1, field.End - close - 1),
                     Number_Text(field.Id + *Section_Delta));
      Rest = Mid_Text(Rest, field.End);
      position = Find_Text(1, Rest, u"SectionCurve");
    }
  }

  void Rebase_Path_Records(Position index_head) {
    Position position = Find_Text(index_head, Rest, u"TrackPath");
    while (position > 0) {
      position = Find_Text(position, Rest, u"(");
      const Position close = Find_Text(position, Rest, u")");
      const Text_View record = Mid_Text(Rest, position + 1, close - position - 1);
      // The blank that may have been before the ")" was trimmed off.
      Output.Replace(record, Rebased_Path(record) + u' ');
      Rest = Mid_Text(Rest, close);
      position = Find_Text(1, Rest, u"TrackPath");
    }
  }

  // The fields of a path record: a shape id, a field that is not ours, then section ids.
  Text Rebased_Path(Text_View record) {
    std::vector<Text> fields = Split_Text(Trim_Text(record));
    if (fields.empty()) throw Failure();
    const Double shape_id = Text_Value(fields[0]);
    if (!Shape_Delta) Shape_Delta = First_Delta(u"ShapeIdx", shape_id, Reserved_Shapes);
    Shapes.push_back(shape_id);
    fields[0] = Number_Text(shape_id + *Shape_Delta);
    for (std::size_t i = 2; i < fields.size(); ++i) {
      Path_Sections.push_back(Text_Value(fields[i]));
      fields[i] = Trim_Text(Number_Text(Path_Sections.back() + Section_Delta.value_or(0)));
    }
    return Join_Text(fields);
  }

  // What the first record of a kind moves by, and all others with it.
  Long First_Delta(Text_View what, Double id, Long reserved) {
    const Long delta = Round_Long(reserved - id);
    if (delta != 0) {
      Log(Concatenate({what, u" changed: ", Number_Text(id), u" -> ", Number_Text(reserved)}));
    }
    return delta;
  }

  Text_View Rest;
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
