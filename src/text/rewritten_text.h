#pragma once

#include <optional>
#include <utility>

#include "text/text.h"

namespace rivelt {

// A copy of a text in which some parts are written anew and all else is carried over. It is made
// with the first part that differs.
class Rewritten_Text {
 public:
  // The text must outlive the copy.
  explicit Rewritten_Text(Text_View text) : Source(text), Rest(text) {}

  // The part is a view into the text, and comes after the parts replaced before.
  void Replace(Text_View part, Text_View replacement) {
    if (part == replacement) return;
    if (!Is_Changed) Output.reserve(Source.size() + Source.size() / 16);
    Is_Changed = true;
    Output.append(Rest.data(), part.data());
    Output += replacement;
    Rest = {part.data() + part.size(), Source.data() + Source.size()};
  }

  // The whole copy; nothing if it would be the same. Called once, at the end.
  std::optional<Text> Finish() {
    if (!Is_Changed) return std::nullopt;
    Output += Rest;
    return std::move(Output);
  }

 private:
  Text_View Source;
  Text_View Rest;
  Text Output;
  bool Is_Changed = false;
};

}  // namespace rivelt
