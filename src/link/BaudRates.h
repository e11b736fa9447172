// The speeds of the line and their places in the lists that the user chooses from.
#pragma once

#include <array>
#include <cstdint>

namespace velmoor {

inline constexpr std::array<std::int32_t, 3> kBaudRates{9600, 19200, 38400};

// Index 0, 1, 2 gives 9600, 19200, 38400 bits per second; any other index 0.
[[nodiscard]] constexpr std::int32_t GetBaudRate(std::int32_t eIndex) {
  if (eIndex < 0 || eIndex >= static_cast<std::int32_t>(kBaudRates.size())) return 0;
  return kBaudRates[static_cast<std::size_t>(eIndex)];
}

// The reverse; any other speed gives 0.
[[nodiscard]] constexpr std::int32_t GetBaudRateIndex(std::int32_t lngBaudRate) {
  for (std::size_t i = 0; i < kBaudRates.size(); ++i) {
    if (kBaudRates[i] == lngBaudRate) return static_cast<std::int32_t>(i);
  }
  return 0;
}

}  // namespace velmoor
