#pragma once

#include <vector>

#include "text/text.h"

namespace rivelt {

// The ids that a file declares.
class Number_Set {
 public:
  Number_Set() = default;

  // Of the numbers, those that are whole and fit a Long. One that comes twice is in the set once.
  explicit Number_Set(const std::vector<Double>& numbers);

  bool Has(Double number) const;

  const std::vector<Long>& In_Order() const { return Numbers; }

 private:
  std::vector<Long> Numbers;
};

}  // namespace rivelt
