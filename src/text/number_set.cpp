#include "text/number_set.h"

#include <algorithm>
#include <limits>

namespace rivelt {
namespace {

bool Is_Long(Double number) {
  return number >= std::numeric_limits<Long>::min() && number <= std::numeric_limits<Long>::max() &&
         number == static_cast<Long>(number);
}

}  // namespace

Number_Set::Number_Set(const std::vector<Double>& numbers) {
  for (const Double number : numbers) {
    if (Is_Long(number)) Numbers.push_back(static_cast<Long>(number));
  }
  std::ranges::sort(Numbers);
  Numbers.erase(std::unique(Numbers.begin(), Numbers.end()), Numbers.end());
}

bool Number_Set::Has(Double number) const {
  return Is_Long(number) && std::ranges::binary_search(Numbers, static_cast<Long>(number));
}

}  // namespace rivelt
