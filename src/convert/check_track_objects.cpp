#include <map>
#include <utility>

#include "convert/track_object.h"
#include "convert/world_passes.h"
#include "text/block_walker.h"
#include "text/forward_search.h"
#include "text/primitives.h"
#include "text/rewritten_text.h"
#include "window/controls.h"

namespace rivelt {
namespace {

class Track_Object_Pass {
 public:
  Track_Object_Pass(Text_View text, const Shape_Tables& tables, const Log_Line& log)
      : Whole(text), Output(text), Tables(tables), Log(log) {}

  Passed_World Run() {
    Read_Track_Objects(Whole, [this](Track_Object& object) { Check(object); });
    Log(Number_Text(Passed.Count) + u" track sections has been changed");
    Passed.Output = Output.Finish();
    return std::move(Passed);
  }

 private:
  void Check(Track_Object& object) {
    if (!object.Is_Readable) {
      if (!object.Missing.empty()) Require_After(object);
      return Leave_As_It_Is();
    }
    const Text new_name = Tables.Map_Shape(object.Old_Name);
    if (new_name == Delete_Entry) return Remove(object);
    const Text id = Number_Text(Id_To_Write(object, new_name)) + u" ";
    const Text name = Concatenate({u" ", new_name, u" "});
    const bool has_id_first = object.First().data() == object.Id.data();
    Output.Replace(object.First(), has_id_first ? id : name);
    Output.Replace(object.Second(), has_id_first ? name : id);
  }

  // What the record lacks has to come after it. A text without it is damaged.
  void Require_After(const Track_Object& object) {
    const Text_View after(object.Next, Whole.data() + Whole.size());
    const auto search = Later.try_emplace(object.Missing, Whole, object.Missing).first;
    if (search->second.Find(after) != 0) return;
    throw Failure(Concatenate({u"no \"", object.Missing, u"\" after the \"TrackObj\""}),
                  object.Record.data());
  }

  // Judges a record that stays: logs and counts what changes, and gives the id that it gets.
  Double Id_To_Write(const Track_Object& object, Text_View new_name) {
    const Long new_id = Tables.Shape_Id(new_name);
    if (new_id == -1) {
      Log(Concatenate({u"Unknown shape ", new_name, u", id ", Number_Text(object.Old_Id)}));
      return object.Old_Id;
    }
    if (new_id != object.Old_Id) {
      Log(Concatenate(
          {new_name, u" id: ", Number_Text(object.Old_Id), u" -> ", Number_Text(new_id)}));
      ++Passed.Corrected;
    }
    if (new_id != object.Old_Id || new_name != object.Old_Name) ++Passed.Count;
    return new_id;
  }

  // The walk leaves out the old id and the old name, so that a "(" in them does not count. Where
  // the record then ends before its second element, that element is not its own.
  void Remove(Track_Object& object) {
    const char16_t* const open = object.Record.data() + object.Open;
    const char16_t* const end = object.Record.data() + object.Record.size();
    const Text_View first = object.First();
    const Text_View second = object.Second();
    Block_Walk walk;
    if (walk.Over({open, first.data()}) != 0 ||
        walk.Over({first.data() + first.size(), second.data()}) != 0) {
      object.Next = object.Is_Closed ? end : object.Next + 1;
      return Leave_As_It_Is();
    }
    const Position close = walk.Over({object.Next, end});
    if (close == 0) throw Failure(u"no \")\" closes this \"TrackObj\"", object.Record.data());
    object.Next += close;
    Output.Replace({object.Record.data(), object.Next}, u"");
    ++Passed.Count;
  }

  void Leave_As_It_Is() {
    Log(u"Left a track object as it is, I cannot read it");
    ++Passed.Left;
  }

  Text_View Whole;
  Rewritten_Text Output;
  Passed_World Passed;
  const Shape_Tables& Tables;
  const Log_Line& Log;
  std::map<Text_View, Forward_Search> Later;  // for what records lack
};

}  // namespace

Passed_World Check_Track_Objects(Text_View text, const Shape_Tables& tables, const Log_Line& log) {
  return Track_Object_Pass(text, tables, log).Run();
}

}  // namespace rivelt
