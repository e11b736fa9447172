// From the description of a machine to the electronic gear ratio A/B and the range of programming
// resolutions that it allows. Pure arithmetic; nothing here throws or hangs, whatever the numbers.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace velmoor {

struct Machine {
  std::int32_t system = 0;      // index, see MachineUnits.h
  float length = 0;             // lead, diameter or modulus, in distance units
  std::int16_t n1 = 1, n2 = 1;  // N1 load-side turns to N2 motor-side turns
  std::int16_t resolution =
      0;  // decimal places; one distance unit is 10^resolution reference units
  std::int32_t encoderCount = 2048;  // lines per turn
};

// Travel per load turn in distance units: the measure times the system's multiplier.
[[nodiscard]] double FeedConstantOf(const Machine& machine);

struct GearRatio {
  std::int32_t a = 0, b = 0;  // both 1 to 65535
};

// Derives A and B. False leaves `ratio` alone and puts the reason into `strError`.
[[nodiscard]] bool IsGearRatioValid(const Machine& machine, GearRatio& ratio,
                                    std::string& strError);

// Replaces the terms by the best fraction with both within 65535; of equally good ones the smallest
// A wins. False leaves them alone.
[[nodiscard]] bool ReduceGearRatio(double& a, double& b);

// The resolutions at which a machine whose ratio B/A is `ratio` at `resolution` has a ratio from
// 0.01 to 100. Does nothing and gives false when the ratio fits already.
[[nodiscard]] bool GetAllowableResolutionRange(float ratio, std::int16_t resolution,
                                               std::int16_t& low, std::int16_t& high);

// The same for any machine. Tells only where the ratio fits; A and B are not tested against 65535.
[[nodiscard]] bool GetResolutionRange(const Machine& machine, std::int16_t& low, std::int16_t& high,
                                      std::string& strError);

}  // namespace velmoor
