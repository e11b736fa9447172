// The search for the amplifiers on a line.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "link/clsHX7Helix7.h"

namespace velmoor {

inline constexpr int kAxisCount = 16;

// Asks axis after axis, half a second each, on the port as it is open, and returns those that
// answer, "0" to "F". Events run between two axes. `queried` is told how many were asked so far.
// The time-out is 5000 ms afterwards.
[[nodiscard]] std::vector<std::string> ScanAxes(clsHX7Helix7& helix,
                                                const std::function<void(int queried)>& queried);

}  // namespace velmoor
