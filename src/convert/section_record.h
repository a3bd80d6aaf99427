// A section record, as both passes over a route's files read it: "SectionCurve", any text up to the
// first ")", then the number field.

#pragma once

#include "text/text.h"

namespace rivelt {

struct Section_Field {
  Double Id;
  Text_View Units;  // what the number written anew takes the place of
  Position End;     // of the blank that ends the field
};

// The ")" before the number field of the record whose keyword is at position. Failure: there is
// none.
Position Find_Section_Field(Text_View text, Position position);

// The number field after the ")" at close. Failure: no blank ends it, or it has a digit that would
// get lost or that belongs to another number.
Section_Field Read_Section_Field(Text_View text, Position close);

}  // namespace rivelt
