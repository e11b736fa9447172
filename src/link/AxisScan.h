// The search for the amplifiers on a line.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "link/clsHX7Helix7.h"

namespace velmoor {

inline constexpr int kAxisCount = 16;

// Asks axis after axis on the port as it is open and returns those that answer, "0" to "F"; with
// echo or without. An axis that is silent costs 80 ms; whatever comes later, up to half a second
// and more, still counts, and where something came late or broken all that were silent are asked
// once more with half a second each. Events run between two axes. `queried` is told how many were
// asked so far and ends the search by false; what was found until then is the result. The time-out
// is 5000 ms afterwards.
[[nodiscard]] std::vector<std::string> ScanAxes(clsHX7Helix7& helix,
                                                const std::function<bool(int queried)>& queried);

}  // namespace velmoor
