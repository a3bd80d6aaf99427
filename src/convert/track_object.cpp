#include "convert/track_object.h"

#include <algorithm>

#include "text/block_walker.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

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

// Whether a quoted name holds a ")", which ends it before its closing quotation mark.
bool Is_Cut_In_Quotes(Text_View record, const Element& name) {
  return std::ranges::count(Inside(record, name), Double_Quote) % 2 == 1 &&
         Find_Text(name.Close, record, {&Double_Quote, 1}) != 0;
}

// The name without its quotation marks and folders.
Text Bare_Name(Text_View name) {
  const Text bare = Replace_Text(name, {&Double_Quote, 1}, u"");
  const std::size_t separator = bare.find_last_of(u"\\/");
  return Text(Trim_Text(separator == Text::npos ? bare : Text_View(bare).substr(separator + 1)));
}

}  // namespace

Text_View Inside(Text_View text, const Element& element) {
  return Mid_Text(text, element.Open + 1, element.Close - element.Open - 1);
}

std::variant<Track_Object, Unreadable> Read_Track_Object(Text_View text, bool is_closed) {
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

void Read_Track_Objects(
    Text_View text, const std::function<void(Text_View record, const Track_Object& object)>& take) {
  Position done = 0;
  for (const Block& block : Find_Blocks(text, u"TrackObj")) {
    if (block.Keyword <= done) continue;
    const Text_View rest = Mid_Text(text, block.Keyword);
    const bool is_closed = block.Close != 0;
    const Text_View record = is_closed ? Left_Text(rest, block.Close - block.Keyword + 1) : rest;
    const auto reading = Read_Track_Object(record, is_closed);
    if (const auto* object = std::get_if<Track_Object>(&reading)) {
      take(record, *object);
      done = block.Keyword + object->Second().Close - 2;
    } else if (is_closed) {
      done = block.Close;
    } else {
      throw Failure();
    }
  }
}

bool Is_Of_Catalogue(Text_View name, Double number,
                     const std::function<Long(Text_View)>& shape_id) {
  const auto gives_number = [&](Text_View known) {
    const Long id = shape_id(known);
    return id != -1 && id == number;
  };
  return gives_number(name) || gives_number(Bare_Name(name));
}

}  // namespace rivelt
