// The units in which a project shows its numbers: how many places, which words, and how many counts
// one unit is. Derived from the machine's description and from nothing else.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "session/Project.h"

namespace velmoor {

// Counts for one unit of distance (0), speed (1) and acceleration (2), and the time entry (3): the
// amplifier's speed is in 1000 reference units a minute, its acceleration in 1000 of those a minute
// a millisecond. A time word other than "seconds" and "minutes" leaves entry 3 as it was.
using ConversionFactors = std::array<double, 4>;
void UpdateConversionFactors(ConversionFactors& factors, std::string_view timeUnits,
                             std::int16_t resolution);

struct Units {
  std::int16_t resolution = 3;  // decimal places of a shown value
  std::string distance = "mm";
  std::string time = "seconds";
  ConversionFactors factors{1000, 60, 0.06, 60};

  // The factors follow from the rest.
  static Units Of(std::int16_t resolution, std::string distance, std::string time);

  // Counts for one unit of that kind.
  [[nodiscard]] double Factor(UnitKind kind) const;
  // "mm", "mm/sec", "mm/sec^2".
  [[nodiscard]] std::string Word(UnitKind kind) const;
  // The count as it is shown.
  [[nodiscard]] std::string Shown(double counts, UnitKind kind) const;
  // Numbers keep their counts from the one to the other.
  [[nodiscard]] bool SameScale(const Units& other) const {
    return resolution == other.resolution && time == other.time;
  }
};

}  // namespace velmoor
