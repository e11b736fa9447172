// The words of a machine's description: systems, units, encoders, and the indexes under which the
// amplifier keeps them in the digits of Pn82E.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace velmoor {

// "Leadscrew" to "Other"; empty outside 0 to 4.
[[nodiscard]] std::string MechanicalSystemFromIndex(std::int32_t index);
// "Lead", "Pitch Diameter" and so on: the label of the system's measure; empty outside 0 to 4.
[[nodiscard]] std::string SystemMeasureDescription(std::int32_t index);
// Turns the measure into travel per load turn; 0 outside 0 to 4.
[[nodiscard]] double MultiplierFactor(std::int32_t index);

// "cm", "mm", "inch", "ft", "deg", "rad"; empty outside 0 to 5. The unit is a label: changing it
// rescales nothing.
[[nodiscard]] std::string DistanceUnitsFromIndex(std::int32_t index);
// The index as decimal text, "0" for an unknown word.
[[nodiscard]] std::string DistanceUnitsIndex(std::string_view word);
// "seconds", "minutes"; empty outside 0 to 1.
[[nodiscard]] std::string TimeUnitsFromIndex(std::int32_t index);
[[nodiscard]] std::string TimeUnitsIndex(std::string_view word);
// The digit of Pn82E at `digit` (0 right-most) as a number; -1 where the text has no such digit.
[[nodiscard]] std::int32_t SelectionDigit(const std::string& bits, int digit);
// Encoder lines per turn: 2048, 16384, 32768; 2048 for any other index.
[[nodiscard]] std::int32_t EncoderCountFromIndex(std::int32_t index);
// The index of that many lines; -1 for any other number.
[[nodiscard]] std::int32_t EncoderIndexOf(std::int32_t count);

// "mm/sec", "in/min"; nothing before the time for an unknown distance word.
[[nodiscard]] std::string SpeedUnitsOf(std::string_view distance, std::string_view time);
// The same and "^2".
[[nodiscard]] std::string AccelerationUnitsOf(std::string_view distance, std::string_view time);

}  // namespace velmoor
