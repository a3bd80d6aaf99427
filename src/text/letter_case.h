// Letter case of every letter of Unicode that has a simple one-to-one counterpart.

#pragma once

#include <compare>

#include "text/text.h"

namespace rivelt {

// The text with each letter in the one form that stands for all its cases, of the same length. Two
// texts differ in letter case only if their folded forms are equal.
Text Fold_Case(Text_View text);

// The one order of names, in lists and folder walks: letter case does not count, and between equals
// the code units decide. A name is folded once, however often it is compared.
struct Name_Key {
  Text Folded;
  Text Name;
  auto operator<=>(const Name_Key& other) const = default;
};

Name_Key Key_Of(Text_View name);

}  // namespace rivelt
