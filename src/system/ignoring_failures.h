#pragma once

#include <exception>

namespace rivelt {

// Does the step. A failure ends the step alone: nothing is reported and the caller goes on.
template <class Step>
void Ignoring_Failures(const Step& step) try {
  step();
} catch (const std::exception&) {
}

}  // namespace rivelt
