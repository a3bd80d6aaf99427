#pragma once

#include <cstddef>
#include <utility>

#include "text/text.h"

namespace rivelt {

// A copy of a text in which some parts are written anew and all else is carried over.
class Rewritten_Text {
 public:
  // The text must outlive the copy.
  explicit Rewritten_Text(Text_View text) : Rest(text) {
    Output.reserve(text.size() + text.size() / 16);
  }

  // The part is a view into the text, and comes after the parts replaced before.
  void Replace(Text_View part, Text_View replacement) {
    const auto before = static_cast<std::size_t>(part.data() - Rest.data());
    Output += Rest.substr(0, before);
    Output += replacement;
    Rest.remove_prefix(before + part.size());
  }

  // The whole copy. Called once, at the end.
  Text Finish() {
    Output += Rest;
    return std::move(Output);
  }

 private:
  Text_View Rest;
  Text Output;
};

}  // namespace rivelt
