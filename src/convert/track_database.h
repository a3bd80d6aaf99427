// A track database (.tdb) or road database (.rdb): "TrackDB" with brackets around all else. In it
// each "TrVectorSections" holds a count and so many times sixteen fields, of which the first two
// are a section id and a shape id; each "TrJunctionNode" holds a shape id as its second field.

#pragma once

#include <functional>

#include "text/text.h"

namespace rivelt {

struct Database_Number {
  enum class Kind { Section, Shape, Junction };  // the last is the shape id of a junction

  Kind Of = Kind::Section;
  Double Value = 0;
  Text_View Field;  // a view into the text: the number alone
};

// Hands over the section ids and shape ids of a database, in their order. Keywords count as whole
// words in any letter case, but not inside quotation marks or a comment block. Failure: a text that
// is not of this form, as when it is compressed or cut, or a number of fields that is not the
// count's. Numbers may have been handed over by then.
void Read_Track_Database(Text_View text, const std::function<void(const Database_Number&)>& take);

}  // namespace rivelt
