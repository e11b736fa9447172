// What the motor does while it is run by hand, in words: speed, position, direction, alarm.
//
// Owned by the test run's window. Each call asks one question, so that a released button never
// waits for more than one exchange.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "link/ResultCode.h"
#include "online/AlarmReadings.h"
#include "online/MonitoredItems.h"

namespace velmoor {

class MotorWatch {
 public:
  MotorWatch() = default;
  // `clockwiseForward` as the amplifier's setting of the rotation has it.
  MotorWatch(MonitoredUnits units, bool clockwiseForward);

  // Asks the next of speed, position and alarm, speed more often, half a second at most. A failure
  // leaves what was read before.
  ResultCode AskNext();
  // What was read is not known any more.
  void Forget();
  struct Reading {
    int item;  // of MonitoredItems()
    std::int32_t raw;
  };
  // What the last question has told; nothing where it failed, or asked for the alarm.
  [[nodiscard]] const std::optional<Reading>& Latest() const { return latest_; }
  [[nodiscard]] const MonitoredUnits& InMachineUnits() const { return machineUnits_; }

  [[nodiscard]] bool IsAlarm() const;  // or a warning
  // An alarm has taken the servo off; a warning (A.9x) does not.
  [[nodiscard]] bool HasTripped() const;
  [[nodiscard]] std::string SpeedText() const;     // "100 rpm (16.400 mm/s)"
  [[nodiscard]] std::string PositionText() const;  // "1200 reference units (1.200 mm)"
  [[nodiscard]] std::string MotionText() const;    // "Moving forward, clockwise"
  [[nodiscard]] std::string AlarmText() const;     // "A.40: Overvoltage"

 private:
  [[nodiscard]] std::string BothUnits(std::int32_t raw, ValueKind kind) const;

  MonitoredUnits units_, machineUnits_;
  bool clockwiseForward_ = false;
  int turn_ = 0;
  bool speedKnown_ = false, positionKnown_ = false, alarmKnown_ = false;
  std::int32_t speed_ = 0;     // rpm, forward positive
  std::int32_t position_ = 0;  // reference units
  AlarmReading alarm_;
  std::optional<Reading> latest_;
};

}  // namespace velmoor
