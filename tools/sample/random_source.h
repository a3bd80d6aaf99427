#pragma once

#include <cstddef>
#include <cstdint>

namespace rivelt::sample {

// Numbers that depend on the seed alone, the same on every system (which the distributions of the
// standard library do not promise).
class Random_Source {
 public:
  explicit Random_Source(std::uint64_t seed) : State(seed) {}

  // From 0 to count - 1. The bias of the remainder does not matter here.
  std::int64_t Below(std::int64_t count) {
    return static_cast<std::int64_t>(Next() % static_cast<std::uint64_t>(count));
  }
  std::int64_t Between(std::int64_t first, std::int64_t last) {
    return first + Below(last - first + 1);
  }
  double Decimal(std::int64_t first, std::int64_t last, double units_in_one) {
    return static_cast<double>(Between(first, last)) / units_in_one;
  }
  bool One_In(std::int64_t count) { return Below(count) == 0; }
  const auto& One_Of(const auto& list) {
    return list[static_cast<std::size_t>(Next() % list.size())];
  }

  // A source of its own for each part of a whole, so that a part does not depend on the size of the
  // parts before it.
  Random_Source Part(std::uint64_t number) const {
    return Random_Source(Random_Source(State ^ (number + 1) * 0xD1342543DE82EF95u).Next());
  }

 private:
  std::uint64_t Next() {  // splitmix64
    State += 0x9E3779B97F4A7C15u;
    std::uint64_t mixed = State;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
    return mixed ^ (mixed >> 31);
  }

  std::uint64_t State;
};

}  // namespace rivelt::sample
