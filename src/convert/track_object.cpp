#include "convert/track_object.h"

#include <algorithm>

#include "text/block_walker.h"
#include "text/primitives.h"
#include "text/reasons.h"

namespace rivelt {
namespace {

// A keyword, the first "(" after it, and the first ")" after that.
struct Element {
  Position Open = 0;
  Position Close = 0;
  Text_View Missing;  // which of the three is not in the text, if one is not
};

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

// Reads the elements of the record. Only one that is closed is known to own what is found in it, so
// only there is a name before the id its own.
void Read_Elements(Track_Object& object) {
  const Text_View record = object.Record;
  const Element id = Find_Element(1, record, u"SectionIdx");
  object.Missing = id.Missing;
  if (!object.Missing.empty()) return;
  object.Id = Inside(record, id);
  object.Old_Id = Text_Value(object.Id);
  Element name = Find_Element(id.Close, record, u"FileName");
  if (object.Is_Closed && name.Missing == u"FileName") {
    name = Find_Element(1, record, u"FileName");
    if (name.Missing.empty() && name.Close > id.Open) return;
  }
  object.Missing = name.Missing;
  if (!object.Missing.empty() || (object.Is_Closed && Is_Cut_In_Quotes(record, name))) return;
  object.Name = Inside(record, name);
  object.Old_Name = Trim_Text(object.Name);
  object.Is_Readable = true;
}

Track_Object Read_Track_Object(Text_View text, const Block& block) {
  Track_Object object;
  object.Is_Closed = block.Close != 0;
  object.Record = Mid_Text(text, block.Keyword);
  if (object.Is_Closed) object.Record = Left_Text(object.Record, block.Close - block.Keyword + 1);
  object.Open = block.Open - block.Keyword + 1;
  Read_Elements(object);
  if (!object.Is_Readable && !object.Is_Closed) {
    throw Failure(Concatenate({u"no \"", object.Missing, u"\" after the \"TrackObj\""}),
                  object.Record.data());
  }
  const Text_View end = object.Is_Readable ? object.Second() : object.Record;
  object.Next = end.data() + end.size();
  return object;
}

// The name without its quotation marks and folders.
Text Bare_Name(Text_View name) {
  const Text bare = Replace_Text(name, {&Double_Quote, 1}, u"");
  const std::size_t separator = bare.find_last_of(u"\\/");
  return Text(Trim_Text(separator == Text::npos ? bare : Text_View(bare).substr(separator + 1)));
}

}  // namespace

void Read_Track_Objects(Text_View text, const std::function<void(Track_Object&)>& take) {
  Naming_Lines(text, [&] {
    const char16_t* next = text.data();
    for (const Block& block : Find_Blocks(text, u"TrackObj")) {
      if (Mid_Text(text, block.Keyword).data() < next) continue;
      Track_Object object = Read_Track_Object(text, block);
      take(object);
      next = object.Next;
    }
  });
}

bool Is_Of_Catalogue(const Track_Object& object, const Id_Of_Shape& shape_id) {
  const auto gives_number = [&](Text_View known) {
    const Long id = shape_id(known);
    return id != -1 && id == object.Old_Id;
  };
  return gives_number(object.Old_Name) || gives_number(Bare_Name(object.Old_Name));
}

}  // namespace rivelt
