// Machines as somebody might describe them.
#pragma once

#include <random>

#include "random_walk/MachineOracle.h"

namespace velmoor::walk {

// A machine of any system, encoder and gearing, valid in about three cases of four.
[[nodiscard]] TypedMachine RandomMachine(std::mt19937_64& random);
// One that is valid beyond doubt.
[[nodiscard]] TypedMachine RandomValidMachine(std::mt19937_64& random);

}  // namespace velmoor::walk
