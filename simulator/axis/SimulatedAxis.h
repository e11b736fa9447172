// The axis behind a simulated amplifier: motor and load, servo on and off, jog, zero point return,
// the motion programme, limits, alarms, and the words that tell of all this.
//
// Nothing happens by itself: time passes in AdvanceTo alone, in steps of a quarter of a
// millisecond. An axis that has come to rest costs nothing.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/axis/AlarmState.h"
#include "simulator/axis/AxisSettings.h"
#include "simulator/axis/AxisSignals.h"
#include "simulator/axis/HomingRun.h"
#include "simulator/axis/MotionProfile.h"
#include "simulator/axis/OverloadGuard.h"
#include "simulator/axis/ProgrammeRun.h"
#include "simulator/axis/ServoPlant.h"
#include "simulator/memory/AmplifierMemory.h"

namespace velmoor {

using Micros = std::chrono::microseconds;

// Where the machine has its switches, in turns of the motor since the simulation began.
struct MachineSwitches {
  std::optional<double> forwardEnd, reverseEnd;
  // A cam on either side of the beginning.
  double homeBegin = 2, homeEnd = 3;
};

class SimulatedAxis {
 public:
  // Memory and alarms are the amplifier's and outlive the axis. `encoderBits` of a motor turn.
  SimulatedAxis(AmplifierMemory& memory, AlarmState& alarm, int encoderBits);

  // Lets time pass until `now`, of any clock that never goes back; it begins with the first call.
  void AdvanceTo(Micros now);
  // The amplifier was switched on or restarted. An incremental encoder counts from 0 again.
  void PowerOn(bool keepsPosition);

  // False during an alarm.
  bool SwitchServo(bool on);
  // Servo off and everything dropped, as an alarm does it.
  void Trip(const std::string& display);
  // Direction 1 or -1, speed in 1000 counts a minute. False where the servo is off or the axis is
  // busy otherwise.
  bool Jog(int direction, std::int32_t speed);
  // Ends the motion in progress; a programme goes on with its next step.
  void Skip();
  // Without a row from the one that the parameters name. False where it cannot run.
  bool StartProgramme(std::optional<std::size_t> row = std::nullopt);
  void HaltProgramme();
  void ResetProgramme();
  bool ReturnToZero();
  // Counts: the home position, and with it every position, has another number from now on.
  void SetHomeOffset(std::int32_t counts);

  [[nodiscard]] bool IsServoOn() const { return servoOn_; }
  [[nodiscard]] bool IsMoving() const { return !profile_.IsDone() || !plant_.Stands(); }
  [[nodiscard]] bool IsProgrammeRunning() const;
  // Time has to pass for something to change.
  [[nodiscard]] bool IsBusy() const { return !IsAtRest(); }
  // "RUN", "INPOS", "BB", "P-OT", "N-OT", or an alarm's display.
  [[nodiscard]] std::string StateText() const;
  // What a value word such as "PUN" tells; nothing for other words.
  [[nodiscard]] std::optional<std::int32_t> Value(std::string_view word) const;
  // Of the motor since the simulation began, whatever the counts say.
  [[nodiscard]] double MotorTurns() const { return plant_.Position(); }
  [[nodiscard]] const ProgrammeRun& Programme() const { return programme_; }
  // In which it is; 0 outside of all.
  [[nodiscard]] std::uint32_t Zone() const { return Outputs().zone; }

  // One line of "IN1" or "IN2"; false for other words.
  bool SetInput(std::string_view word, int bit, bool on);
  void SetLoad(const DrivenLoad& load);
  [[nodiscard]] const DrivenLoad& Load() const { return load_; }
  void SetSwitches(const MachineSwitches& switches);
  [[nodiscard]] const MachineSwitches& Switches() const { return switches_; }

 private:
  static constexpr Micros kStep{250};
  static constexpr double kStepSeconds = 250e-6;

  void Refresh();
  void Step();
  void ReadLines();
  void FollowLines(const AxisInputs& before);
  void FollowJogLines(const AxisInputs& before);
  void RunProgramme();
  void RunHoming();
  void GuardTravel();
  void EndTravel(const char* error, bool atOnce);
  void Protect();
  void Observe();
  void DropMotion();
  void RelabelBy(double counts);
  [[nodiscard]] bool IsAtRest() const;
  [[nodiscard]] double Actual() const;  // counts
  [[nodiscard]] double PositionError() const { return profile_.Position() - Actual(); }
  [[nodiscard]] double Shown(double counts) const;
  [[nodiscard]] InputLines Lines() const;
  [[nodiscard]] AxisOutputs Outputs() const;
  [[nodiscard]] std::uint32_t Status() const;
  [[nodiscard]] HomingSurroundings HomingNow();

  AmplifierMemory& memory_;
  AlarmState& alarm_;
  int encoderBits_;
  AxisSettings settings_;
  DrivenLoad load_;
  MachineSwitches switches_;
  InputLines lines_;
  std::optional<InputLines> readLines_;  // of inputs_; nothing: to be read again
  AxisInputs inputs_;
  MotionProfile profile_;
  ServoPlant plant_;
  ProgrammeRun programme_;
  HomingRun homing_;
  std::optional<Micros> time_;
  double offset_ = 0;  // counts at the motor's beginning
  bool servoOn_ = false;
  bool jogs_ = false;
  bool switchesOffAtRest_ = false;
  bool registered_ = false;
  bool inPosition_ = false, near_ = false;
  OverloadGuard overload_;
  int calmSteps_ = 0;
};

}  // namespace velmoor
