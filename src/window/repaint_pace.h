// How often the window is repainted in the middle of the work.

#pragma once

#include <algorithm>
#include <chrono>

namespace rivelt {

// The pause between a repaint that took this long and the next. A person sees some sixty pictures a
// second; on a slow screen repaints take little of the working time, and the window does not seem
// to hang.
constexpr std::chrono::milliseconds Pause_After_Repaint(std::chrono::milliseconds repaint) {
  constexpr std::chrono::milliseconds shortest{16};
  constexpr std::chrono::milliseconds longest{100};
  if (repaint > longest / 10) return longest;
  return std::max(shortest, 10 * repaint);
}

// Leaves out the repaints that nobody could see.
class Repaint_Pace {
 public:
  template <class Repaint>
  void Run(const Repaint& repaint) {
    const Clock::time_point start = Clock::now();
    if (start < Next) return;
    repaint();
    const Clock::time_point end = Clock::now();
    Next = end +
           Pause_After_Repaint(std::chrono::duration_cast<std::chrono::milliseconds>(end - start));
  }

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point Next{};
};

}  // namespace rivelt
