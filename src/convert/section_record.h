// A section record, as both passes over a route's files read it: "SectionCurve", any text up to the
// first ")", then the number field.

#pragma once

#include "text/text.h"

namespace rivelt {

// The one number of a field. Failure: it holds anything but one number. Two would be read as one.
Double Only_Number(Text_View field);

struct Section_Field {
  Double Id;
  Position End;  // of the blank that ends the field
};

// The ")" before the number field of the record whose keyword is at position. Failure: there is
// none.
Position Find_Section_Field(Text_View rest, Position position);

// The number field after the ")" at close. Failure: no blank ends it, or it holds anything but one
// number: rewriting it would lose the rest.
Section_Field Read_Section_Field(Text_View rest, Position close);

}  // namespace rivelt
