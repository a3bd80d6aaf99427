// Reasons that name the place in a text. A reader knows only where it is; the number of the line is
// worked out once a Failure has come up.

#pragma once

#include "text/text.h"

namespace rivelt {

// The first target at or after start. Failure: there is none. The reason then names the keyword
// that it has to come after, if there is one, and its line if the keyword is a part of the text.
Position Find_After(Text_View keyword, Position start, Text_View text, Text_View target);

// The failure with the lines, counted from 1, of its places in the text.
Failure With_Lines(Text_View text, const Failure& failure);

// Does the step, which reads the text, so that a Failure names the line.
template <class Step>
auto Naming_Lines(Text_View text, const Step& step) try {
  return step();
} catch (const Failure& failure) {
  throw With_Lines(text, failure);
}

// Does the step, so that the reason of a Failure begins with the name of the file.
template <class Step>
auto Naming_File(Text_View name, const Step& step) try {
  return step();
} catch (const Failure& failure) {
  throw Failure(Text(name).append(u", ").append(failure.Reason()));
}

}  // namespace rivelt
