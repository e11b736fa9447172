#include "project/data/MachineUnits.h"

#include <algorithm>
#include <array>
#include <span>

#include "platform/Numbers.h"
#include "platform/Utility.h"

namespace velmoor {
namespace {

struct System {
  std::string_view name;
  std::string_view measure;
  bool measureIsDiameter;
};

constexpr std::array<System, 5> kSystems{{{"Leadscrew", "Lead", false},
                                          {"Tangential/Belt Drive", "Pitch Diameter", true},
                                          {"Material Feeder", "Feed-roll Diameter", true},
                                          {"Rotary Table", "Modulus", false},
                                          {"Other", "Distance/Rev or Modulus", false}}};
constexpr std::array<std::string_view, 6> kDistanceUnits{"cm", "mm", "inch", "ft", "deg", "rad"};
constexpr std::array<std::string_view, 2> kTimeUnits{"seconds", "minutes"};
constexpr std::array<std::int32_t, 3> kEncoderCounts{2048, 16384, 32768};

template <typename Entry>
const Entry* At(std::span<const Entry> table, std::int32_t index) {
  const bool inside = index >= 0 && static_cast<std::size_t>(index) < table.size();
  return inside ? &table[static_cast<std::size_t>(index)] : nullptr;
}

std::string WordAt(std::span<const std::string_view> words, std::int32_t index) {
  const std::string_view* const word = At(words, index);
  return word != nullptr ? std::string(*word) : std::string();
}

std::string IndexOf(std::span<const std::string_view> words, std::string_view word) {
  const auto found = std::find(words.begin(), words.end(), word);
  return found == words.end() ? "0" : NumberText(found - words.begin());
}

const System* SystemAt(std::int32_t index) {
  return At(std::span<const System>(kSystems), index);
}

}  // namespace

std::string MechanicalSystemFromIndex(std::int32_t index) {
  const System* const system = SystemAt(index);
  return system != nullptr ? std::string(system->name) : std::string();
}

std::string SystemMeasureDescription(std::int32_t index) {
  const System* const system = SystemAt(index);
  return system != nullptr ? std::string(system->measure) : std::string();
}

double MultiplierFactor(std::int32_t index) {
  const System* const system = SystemAt(index);
  if (system == nullptr) return 0;
  return system->measureIsDiameter ? GetCircleConstant() : 1.0;
}

std::string DistanceUnitsFromIndex(std::int32_t index) {
  return WordAt(kDistanceUnits, index);
}
std::string DistanceUnitsIndex(std::string_view word) {
  return IndexOf(kDistanceUnits, word);
}
std::string TimeUnitsFromIndex(std::int32_t index) {
  return WordAt(kTimeUnits, index);
}
std::string TimeUnitsIndex(std::string_view word) {
  return IndexOf(kTimeUnits, word);
}

std::int32_t SelectionDigit(const std::string& bits, int digit) {
  const auto fromRight = static_cast<std::size_t>(digit) + 1;
  if (bits.size() < fromRight) return -1;
  const auto value = ParseHex(bits.substr(bits.size() - fromRight, 1));
  return value ? static_cast<std::int32_t>(*value) : -1;
}

std::int32_t EncoderCountFromIndex(std::int32_t index) {
  const std::int32_t* const count = At(std::span<const std::int32_t>(kEncoderCounts), index);
  return count != nullptr ? *count : kEncoderCounts.front();
}

std::int32_t EncoderIndexOf(std::int32_t count) {
  const auto* const found = std::ranges::find(kEncoderCounts, count);
  return found == kEncoderCounts.end() ? -1
                                       : static_cast<std::int32_t>(found - kEncoderCounts.begin());
}

std::string SpeedUnitsOf(std::string_view distance, std::string_view time) {
  std::string text;
  if (distance == "inch") {
    text = "in/";
  } else if (std::find(kDistanceUnits.begin(), kDistanceUnits.end(), distance) !=
             kDistanceUnits.end()) {
    text = std::string(distance) + "/";
  }
  return text + Left(time, 3);
}

std::string AccelerationUnitsOf(std::string_view distance, std::string_view time) {
  return SpeedUnitsOf(distance, time) + "^2";
}

}  // namespace velmoor
