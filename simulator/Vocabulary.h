// The command words of the simulated amplifier and what each of them does.
#pragma once

#include <string_view>

#include "simulator/SimulatedAmplifier.h"

namespace velmoor {

// Executes a command without its axis character. The reply has no axis either.
[[nodiscard]] Reply ExecuteWord(AmplifierState& state, std::string_view command);

// The word at the front of a command: the longest known one. Empty when there is none.
[[nodiscard]] std::string_view WordOf(std::string_view command);

// The words that ask for a number, and whether the answer is told as bits.
[[nodiscard]] bool IsValueWord(std::string_view word);
[[nodiscard]] int BitsOf(std::string_view word);  // 0 for decimal values

}  // namespace velmoor
