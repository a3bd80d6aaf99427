#include <algorithm>
#include <map>
#include <utility>
#include <variant>

#include "convert/world_passes.h"
#include "text/block_walker.h"
#include "text/forward_search.h"
#include "text/primitives.h"
#include "window/controls.h"

namespace rivelt {
namespace {

// An element of a record: a keyword, the first "(" after it, and the first ")" after that.
struct Element {
  Position Open = 0;
  Position Close = 0;
  Text_View Missing;  // which of the three is not in the text, if one is not
};

// Where one stretch of text ends and the next goes on. What is between them is written again.
struct Track_Object {
  Element Id;
  Element Name;
  Double Old_Id = 0;
  Text_View Old_Name;

  bool Has_Name_First() const { return Name.Open < Id.Open; }
  const Element& First() const { return Has_Name_First() ? Name : Id; }
  const Element& Second() const { return Has_Name_First() ? Id : Name; }
};

struct Unreadable {
  Text_View Missing;  // what the record lacks; empty if it has all it needs
};

using Reading = std::variant<Track_Object, Unreadable>;

Element Find_Element(Position start, Text_View text, Text_View keyword) {
  Element element;
  const Position position = Find_Text(start, text, keyword);
  if (position == 0) return {0, 0, keyword};
  element.Open = Find_Text(position, text, u"(");
  if (element.Open == 0) return {0, 0, u"("};
  element.Close = Find_Text(element.Open, text, u")");
  if (element.Close == 0) return {0, 0, u")"};
  return element;
}

Text_View Inside(Text_View text, const Element& element) {
  return Mid_Text(text, element.Open + 1, element.Close - element.Open - 1);
}

// Whether a quoted name holds a ")", which ends it before its closing quotation mark.
bool Is_Cut_In_Quotes(Text_View record, const Element& name) {
  return std::ranges::count(Inside(record, name), Double_Quote) % 2 == 1 &&
         Find_Text(name.Close, record, {&Double_Quote, 1}) != 0;
}

// Reads the record that is the whole text, or, if no ")" closes it, begins the text. Only a closed
// record is known to own what is found in it, so only there is a name before the id its own.
Reading Read_Record(Text_View text, bool is_closed) {
  Track_Object record;
  record.Id = Find_Element(1, text, u"SectionIdx");
  if (!record.Id.Missing.empty()) return Unreadable{record.Id.Missing};
  record.Old_Id = Text_Value(Inside(text, record.Id));
  record.Name = Find_Element(record.Id.Close, text, u"FileName");
  if (is_closed && record.Name.Missing == u"FileName") {
    record.Name = Find_Element(1, text, u"FileName");
    if (record.Name.Missing.empty() && record.Name.Close > record.Id.Open) return Unreadable{};
  }
  if (!record.Name.Missing.empty()) return Unreadable{record.Name.Missing};
  if (is_closed && Is_Cut_In_Quotes(text, record.Name)) return Unreadable{};
  record.Old_Name = Trim_Text(Inside(text, record.Name));
  return record;
}

class Track_Object_Pass {
 public:
  Track_Object_Pass(Text_View text, const Shape_Tables& tables, const Log_Line& log)
      : Whole(text), Rest(text), Tables(tables), Log(log) {
    Output.reserve(text.size() + text.size() / 16);
  }

  Passed_World Run() {
    for (const Block& block : Find_Blocks(Whole, u"TrackObj")) {
      if (block.Keyword > Done()) Check_Record(block);
    }
    Log(Number_Text(Change_Count) + u" track sections has been changed");
    Output += Rest;
    return {std::move(Output), Change_Count};
  }

 private:
  void Check_Record(const Block& block) {
    Carry_Over(block.Keyword - 1 - Done());
    const bool is_closed = block.Close != 0;
    const Text_View text = is_closed ? Left_Text(Rest, block.Close - Done()) : Rest;
    const Reading reading = Read_Record(text, is_closed);
    if (const auto* unreadable = std::get_if<Unreadable>(&reading)) {
      if (!unreadable->Missing.empty()) Require_After(text, unreadable->Missing);
      return Leave_As_It_Is(static_cast<Position>(text.size()));
    }
    const auto& record = std::get<Track_Object>(reading);
    const Text new_name = Tables.Map_Shape(record.Old_Name);
    if (new_name == Delete_Entry) return Remove(record, text, block);
    Write(record, new_name);
  }

  // What the record lacks has to come after it. A text without it is damaged.
  void Require_After(Text_View record, Text_View missing) {
    const Text_View after = Mid_Text(Rest, static_cast<Position>(record.size()) + 1);
    if (Later.try_emplace(missing, Whole, missing).first->second.Find(after) == 0) throw Failure();
  }

  void Write(const Track_Object& record, Text_View new_name) {
    const Text id = Number_Text(Id_To_Write(record, new_name)) + u" ";
    const Text name = Concatenate({u" ", new_name, u" "});
    const Position second_open = record.Second().Open - record.First().Close + 1;
    const Position second_close = record.Second().Close - record.First().Close + 1;
    Carry_Over(record.First().Open);
    Output += record.Has_Name_First() ? name : id;
    Skip(record.First().Close - record.First().Open - 1);
    Carry_Over(second_open);
    Output += record.Has_Name_First() ? id : name;
    Skip(second_close - second_open - 1);
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

  // The walk leaves out the old id and the old name, so that a "(" in them does not count. Where
  // the record then ends before its second element, that element is not its own.
  void Remove(const Track_Object& record, Text_View text, const Block& block) {
    const Element& first = record.First();
    const Element& second = record.Second();
    const Position open = block.Open - block.Keyword + 1;
    Block_Walk walk;
    if (walk.Over(Mid_Text(text, open + 1, first.Open - open)) != 0 ||
        walk.Over(Mid_Text(text, first.Close, second.Open - first.Close + 1)) != 0) {
      return Leave_As_It_Is(block.Close != 0 ? static_cast<Position>(text.size()) : second.Close);
    }
    const Position close = walk.Over(Mid_Text(text, second.Close));
    if (close == 0) throw Failure();
    Skip(second.Close + close - 1);
    ++Change_Count;
  }

  void Leave_As_It_Is(Position end) {
    Log(u"Left a track object as it is, I cannot read it");
    Carry_Over(end);
  }

  // How much of the whole text is dealt with.
  Position Done() const { return static_cast<Position>(Whole.size() - Rest.size()); }

  void Carry_Over(Position count) {
    Output += Left_Text(Rest, count);
    Skip(count);
  }

  void Skip(Position count) { Rest = Mid_Text(Rest, count + 1); }

  Text_View Whole;
  Text_View Rest;
  Text Output;
  Long Change_Count = 0;
  const Shape_Tables& Tables;
  const Log_Line& Log;
  std::map<Text_View, Forward_Search> Later;  // for what records lack
};

}  // namespace

Passed_World Check_Track_Objects(Text_View text, const Shape_Tables& tables, const Log_Line& log) {
  return Track_Object_Pass(text, tables, log).Run();
}

}  // namespace rivelt
