// What a transfer takes on the line, told before it begins. An exchange at 9600 bit/s was measured
// on a whole project: 28 characters of 11 bits for a value that is written, 32 for one that is
// read.
#pragma once

#include <cstdint>
#include <string>

namespace velmoor {

enum class Way : std::uint8_t { write, read };

// In whole seconds, rounded up.
[[nodiscard]] int TransferSeconds(int values, Way way, std::int32_t bitsPerSecond);
// "1292 exchanges, about 42 s at 9600 bit/s (11 s at 38400)."
[[nodiscard]] std::string TransferCost(int values, Way way, std::int32_t bitsPerSecond);

}  // namespace velmoor
