// The parameters that the simulated amplifier has, with their factory values and limits.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace velmoor {

enum class FactoryKind : std::uint8_t {
  decimal,  // a signed whole number
  nibble,   // four hexadecimal digits
  text8     // eight decimal digits without a sign
};

struct FactoryValue {
  std::string_view pn;  // three hexadecimal digits
  std::string_view initial;
  std::string_view min;  // limits of decimal values
  std::string_view max;
  FactoryKind kind;
};

// In ascending order of their numbers.
[[nodiscard]] std::span<const FactoryValue> FactoryValues();

}  // namespace velmoor
