// A section record, as both passes over a route's files read it: "SectionCurve", any text up to the
// first
// ")", then the number field.

#pragma once

#include "text/text.h"

namespace rivelt {

struct Section_Record {
  Position Close;   // of the ")" in front of the number field
  Double Id;        // the number in the field
  Position Behind;  // of the blank that ends the field
};

// The record whose keyword stands at position. Failure: no ")" behind it, no blank at the end of
// the field, or a field that does not hold one number and nothing else: rewriting it would lose the
// rest.
Section_Record Read_Section_Record(Text_View rest, Position position);

}  // namespace rivelt
