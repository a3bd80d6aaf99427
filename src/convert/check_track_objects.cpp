#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "convert/world_passes.h"
#include "text/block_walker.h"
#include "text/forward_search.h"
#include "text/primitives.h"
#include "window/controls.h"

namespace rivelt {
namespace {

// A record as views into the text.
struct Track_Object {
  Text_View Head;  // from "TrackObj" up to and including the "(" of "SectionIdx"
  Double Old_Id = 0;
  Text_View Middle;  // from the ")" of "SectionIdx" up to and including the "(" of "FileName"
  Text_View Old_Name;
  Text_View Rest;  // from the ")" of "FileName" on
};

// A quoted name that holds a ")" is cut there, with its closing quote behind the cut.
bool Is_Cut_In_Quotes(Text_View name) {
  const std::size_t first = name.find_first_not_of(u" \t\r\n");
  return first != Text_View::npos && name[first] == Double_Quote &&
         std::ranges::count(name, Double_Quote) == 1;
}

class Track_Object_Pass {
 public:
  Track_Object_Pass(Text_View text, const Shape_Tables& tables, const Log_Line& log)
      : Whole(text),
        Rest(text),
        Tables(tables),
        Log(log),
        Section_Indexes(text, u"SectionIdx"),
        File_Names(text, u"FileName") {
    Output.reserve(text.size() + text.size() / 16);
  }

  Passed_World Run() {
    while (const Position position = Find_Text(1, Rest, u"TrackObj")) {
      Output += Left_Text(Rest, position - 1);
      Rest = Mid_Text(Rest, position);
      Check_Record();
    }
    Log(Number_Text(Change_Count) + u" track sections has been changed");
    Output += Rest;
    return {std::move(Output), Change_Count};
  }

 private:
  void Check_Record() {
    const std::optional<Track_Object> record = Read_Record();
    if (!record) return Leave_As_It_Is(Record_End);
    if (Is_Cut_In_Quotes(record->Old_Name)) return Leave_As_It_Is(Name_End(*record));
    const Text new_name = Tables.Map_Shape(record->Old_Name);
    if (new_name == Delete_Entry) return Remove(*record);
    const Text written_id = Number_Text(Id_To_Write(*record, new_name));
    for (const Text_View part :
         {record->Head, Text_View(written_id), Text_View(u" "), record->Middle, Text_View(u" "),
          Text_View(new_name), Text_View(u" ")}) {
      Output += part;
    }
    Rest = record->Rest;
  }

  // Reads the record at the front of the rest. Nothing if it ends, at Record_End, in front of one
  // of its elements, or has them in the wrong order. A record whose brackets do not balance has no
  // end. No search or walk covers text that an earlier record's has covered: see the bounds of
  // Ends_Before.
  std::optional<Track_Object> Read_Record() {
    Begin_Record();
    Track_Object record;
    const Position section_index = Section_Indexes.Find(Rest);
    if (Ends_Before(section_index) || Has_Name_Before(section_index)) return std::nullopt;
    const Position id_open = Find_Text(section_index, Rest, u"(");
    if (Ends_Before(id_open)) return std::nullopt;
    const Position id_close = Find_Text(id_open, Rest, u")");
    record.Head = Left_Text(Rest, id_open);
    record.Old_Id = Text_Value(Mid_Text(Rest, id_open + 1, id_close - id_open));

    const Position file_name = Behind(id_close, File_Names.Find(Mid_Text(Rest, id_close)));
    if (Ends_Before(file_name)) return std::nullopt;
    const Position name_open = Find_Text(file_name, Rest, u"(");
    if (Ends_Before(name_open)) return std::nullopt;
    const Position name_close = Find_Text(name_open, Rest, u")");
    record.Middle = Mid_Text(Rest, id_close, name_open - id_close + 1);
    record.Old_Name = Trim_Text(Mid_Text(Rest, name_open + 1, name_close - name_open - 1));
    record.Rest = Mid_Text(Rest, name_close);
    return record;
  }

  void Begin_Record() {
    Walked = Find_Text(1, Rest, u"(");
    Record_End = 0;
    Walk = Block_Walk();
  }

  // Whether the record ends in front of bound, a position in the rest; walks no further than that.
  // With a bound of 0, where an element was not found at all, it is left to the next step to fail.
  bool Ends_Before(Position bound) {
    if (Walked == 0 || bound <= Walked) return false;
    const Position found = Walk.Over(Mid_Text(Rest, Walked + 1, bound - Walked - 1));
    if (found != 0) Record_End = Walked + found;
    Walked = bound - 1;
    return found != 0;
  }

  // Whether "FileName" stands in front of "SectionIdx" in a record that has an end.
  bool Has_Name_Before(Position section_index) {
    const Position file_name = File_Names.Find(Rest);
    if (file_name == 0 || file_name > section_index || Is_Unbalanced()) return false;
    return Ends_Before(static_cast<Position>(Rest.size()) + 1);
  }

  bool Is_Unbalanced() {
    if (!Unbalanced) Unbalanced = Unbalanced_Brackets(Whole);
    const Position cut = static_cast<Position>(Whole.size() - Rest.size());
    return std::ranges::binary_search(*Unbalanced, cut + Find_Text(1, Rest, u"("));
  }

  // A position found in the rest from `from` on, as one in the rest itself.
  static Position Behind(Position from, Position found) {
    return found == 0 ? 0 : from + found - 1;
  }

  // Judges a record that stays: logs and counts what changes, and gives the id that it gets.
  Double Id_To_Write(const Track_Object& record, Text_View new_name) {
    const Long new_id = Tables.Shape_Id(new_name);
    if (new_id == -1) {
      Log(Concatenate({u"Unknown shape ", new_name, u", id ", Number_Text(record.Old_Id)}));
      return record.Old_Id;
    }
    if (new_id != record.Old_Id) {
      Log(Concatenate(
          {new_name, u" id: ", Number_Text(record.Old_Id), u" -> ", Number_Text(new_id)}));
      ++Change_Count;
      return new_id;
    }
    if (new_name != record.Old_Name) ++Change_Count;
    return record.Old_Id;
  }

  // The walk leaves out the old id and the old name, so that a "(" in them does not count.
  void Remove(const Track_Object& record) {
    Block_Walk walk;
    const Position open = Find_Text(1, record.Head, u"(");
    if (walk.Over(Mid_Text(record.Head, open + 1)) != 0 || walk.Over(record.Middle) != 0) {
      return Leave_As_It_Is(Name_End(record));
    }
    const Position close = walk.Over(record.Rest);
    if (close == 0) throw Failure();
    Rest = Mid_Text(record.Rest, close + 1);
    ++Change_Count;
  }

  void Leave_As_It_Is(Position end) {
    Log(u"Left a track object as it is, I cannot read it");
    Output += Left_Text(Rest, end);
    Rest = Mid_Text(Rest, end + 1);
  }

  // Of the ")" behind the name.
  Position Name_End(const Track_Object& record) const {
    return static_cast<Position>(Rest.size() - record.Rest.size()) + 1;
  }

  Text_View Whole;
  Text_View Rest;
  Text Output;
  Long Change_Count = 0;
  const Shape_Tables& Tables;
  const Log_Line& Log;
  Forward_Search Section_Indexes;
  Forward_Search File_Names;

  // The walk over the record at the front of the rest.
  Block_Walk Walk;
  Position Walked = 0;                              // how far it has come
  Position Record_End = 0;                          // where it ended, or 0
  std::optional<std::vector<Position>> Unbalanced;  // in the whole text, once it matters
};

}  // namespace

Passed_World Check_Track_Objects(Text_View text, const Shape_Tables& tables, const Log_Line& log) {
  return Track_Object_Pass(text, tables, log).Run();
}

}  // namespace rivelt
