// A table of values under text keys. Keys that differ only in letter case are the same key; nothing
// else is folded. Each key occurs once.

#pragma once

#include <string>
#include <unordered_map>
#include <utility>

#include "text/letter_case.h"
#include "text/text.h"

namespace rivelt {

template <class Item>
class Keyed_Collection {
 public:
  // Failure: the key is there already; the collection is as it was.
  void Add(Item item, Text_View key) {
    if (!Items.try_emplace(Fold_Case(key), std::move(item)).second) {
      throw Failure(Text(key).append(u" is there already"));
    }
  }

  // Failure: the key is not there.
  const Item& Look_Up(Text_View key) const {
    if (const Item* found = Find(key)) return *found;
    throw Failure(Text(u"there is no ").append(key));
  }

  // Nothing if the key is not there. For look-ups that miss as a rule: a Failure for each of them
  // would take most of the time of a check.
  const Item* Find(Text_View key) const {
    const auto found = Items.find(Fold_Case(key));
    return found == Items.end() ? nullptr : &found->second;
  }

  Long Count() const { return static_cast<Long>(Items.size()); }

 private:
  std::unordered_map<Text, Item> Items;
};

}  // namespace rivelt
