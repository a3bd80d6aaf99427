// Letter case of every letter of Unicode that has a simple one-to-one counterpart.

#pragma once

#include "text/text.h"

namespace rivelt {

// The text with each letter in the one form that stands for all its cases, of the same length. Two
// texts differ in letter case only if their folded forms are equal.
Text Fold_Case(Text_View text);

// The order of lists and folder walks: letter case does not count, and between equals the code
// units decide. Below, at or above 0 as first stands before, at or behind second.
int Compare_By_Name(Text_View first, Text_View second);

}  // namespace rivelt
