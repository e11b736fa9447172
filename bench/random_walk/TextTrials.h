// Random projects, each turned into text, into a new project and into another one, and back: all
// must hold the same and read the same.
#pragma once

#include <cstdint>
#include <string>

#include "random_walk/MachineTrials.h"

namespace velmoor::walk {

// `folder` is the trials' own. `machines` counts projects, `entered` those that came back whole,
// `doubtful` those among them with values that nobody could have typed.
[[nodiscard]] TrialReport RunTextTrials(const std::string& folder, std::uint64_t seed,
                                        int projects);

}  // namespace velmoor::walk
