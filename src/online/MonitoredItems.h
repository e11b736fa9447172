// What can be watched on the live hardware: the items, their words and units, their lines.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "link/CommandWords.h"

namespace velmoor {

class Project;

enum class ValueKind { distance, speed, torque, bits };

struct MonitoredItem {
  std::string_view label;  // "Current Position:"; of lines the group's
  ValueCommand command;
  ValueKind kind;
  std::size_t bits = 0;  // how many indicators show it
};

inline constexpr int kMonitoredItems = 16;
inline constexpr int kMonitoredValues = 10;  // the first ones, shown as numbers
inline constexpr int kPositionItem = 0;
inline constexpr int kSpeedItem = 7;
inline constexpr int kTorqueItem = 9;
inline constexpr int kStatusItem = 10;
inline constexpr int kAlarmItem = 15;  // has words of its own and no entry in the list

// Items 0 to 14, in the order in which a pass reads them.
[[nodiscard]] std::span<const MonitoredItem> MonitoredItems();
// The wire's word of a command: "PUN".
[[nodiscard]] std::string_view WordOf(ValueCommand command);

// Its name without what stands behind it: "Current Position".
[[nodiscard]] std::string NameOf(const MonitoredItem& item);
// The place of an item by its word, in any case; nothing where there is none.
[[nodiscard]] std::optional<int> ItemNamed(std::string_view word);

// Why a word names none: "'X' is none of PUN PER ...".
[[nodiscard]] std::string NoItem(std::string_view word);

// The names of the status flags, bit 0 first.
[[nodiscard]] std::span<const std::string_view> StatusFlags();
// The names of the lines of item 11 to 14, bit 0 first. Two lines have no use before version 3 of
// the option card.
[[nodiscard]] std::array<std::string, 8> LineNames(int item, bool isOptionVersionNew);

// The names of the flags or lines that are on in a value of item 10 to 14, without their pins:
// "P-OT, N-OT".
[[nodiscard]] std::string BitWords(int item, std::int32_t raw);

// How numbers are shown: as they came, or in the machine's units.
class MonitoredUnits {
 public:
  // `feedConstant` in distance units for a motor turn.
  MonitoredUnits(const Project& project, float feedConstant);
  MonitoredUnits() = default;

  void SetMachineUnits(bool machineUnits) { machineUnits_ = machineUnits; }
  [[nodiscard]] bool AreMachineUnits() const { return machineUnits_; }
  [[nodiscard]] std::string UnitOf(ValueKind kind) const;
  // The raw number in the chosen units.
  [[nodiscard]] double Convert(std::int32_t raw, ValueKind kind) const;
  // The same as text.
  [[nodiscard]] std::string Text(std::int32_t raw, ValueKind kind) const;
  // Decimals of such texts.
  [[nodiscard]] int Decimals(ValueKind kind) const;

 private:
  [[nodiscard]] bool Converts(ValueKind kind) const;

  bool machineUnits_ = false;
  std::string sUnits_, sTimeUnits_;
  double dblConversionForDistance_ = 1;
  double dblConversionForTime_ = 60;
  float sngFeedConstant_ = 0;
  std::int16_t intRes_ = 0;
};

}  // namespace velmoor
