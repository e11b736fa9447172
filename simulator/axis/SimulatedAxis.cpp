#include "simulator/axis/SimulatedAxis.h"

#include <cmath>

namespace velmoor {
namespace {

constexpr int kCalmSteps = 400;  // so many in a row make a rest

}  // namespace

SimulatedAxis::SimulatedAxis(AmplifierMemory& memory, AlarmState& alarm, int encoderBits)
    : memory_(memory), alarm_(alarm), encoderBits_(encoderBits) {
  settings_ = ReadAxisSettings(memory_.parameters, encoderBits_);
}

double SimulatedAxis::Actual() const {
  return plant_.Position() * settings_.countsPerTurn + offset_;
}

bool SimulatedAxis::IsProgrammeRunning() const {
  return programme_.IsRunning() && !programme_.IsHalted();
}

bool SimulatedAxis::IsAtRest() const {
  // A torque that heats the motor does so while it stands, too.
  return calmSteps_ >= kCalmSteps && std::abs(plant_.Torque()) < 1 && !IsProgrammeRunning() &&
         !homing_.IsRunning();
}

// ---- time

// Parameters may have changed since time last passed.
void SimulatedAxis::Refresh() {
  const double actual = Actual();
  settings_ = ReadAxisSettings(memory_.parameters, encoderBits_);
  offset_ += actual - Actual();
  readLines_.reset();
  ReadLines();
}

void SimulatedAxis::AdvanceTo(Micros now) {
  if (!time_) time_ = now;
  Refresh();
  while (*time_ + kStep <= now) {
    if (IsAtRest()) {
      overload_.Pass(std::chrono::duration<double>(now - *time_).count(), plant_.Torque());
      time_ = now;
      return;
    }
    Step();
    *time_ += kStep;
  }
}

void SimulatedAxis::Step() {
  ReadLines();
  RunProgramme();
  RunHoming();
  GuardTravel();
  std::optional<ServoCommand> command;
  if (servoOn_) {
    profile_.Step(kStepSeconds, settings_.rates);
    command = ServoCommand{(profile_.Position() - offset_) / settings_.countsPerTurn,
                           profile_.Speed() / settings_.countsPerTurn};
  }
  plant_.Step(kStepSeconds, command, settings_.gains, load_);
  if (!servoOn_) profile_.PlaceAt(Actual());
  Observe();
  Protect();
  const bool calm = profile_.IsDone() && plant_.Stands() && std::abs(PositionError()) < 1;
  calmSteps_ = calm ? calmSteps_ + 1 : 0;
}

// ---- commands

void SimulatedAxis::PowerOn(bool keepsPosition) {
  DropMotion();
  programme_.ClearOutputs();
  servoOn_ = false;
  if (!keepsPosition) offset_ -= Actual();
  profile_.PlaceAt(Actual());
  overload_ = {};
  calmSteps_ = 0;
}

void SimulatedAxis::DropMotion() {
  programme_.Reset();
  homing_.Abort();
  jogs_ = false;
  switchesOffAtRest_ = false;
}

bool SimulatedAxis::SwitchServo(bool on) {
  if (on == servoOn_) return true;
  if (on && !alarm_.current.empty()) return false;
  calmSteps_ = 0;
  servoOn_ = on;
  DropMotion();
  profile_.PlaceAt(Actual());
  if (on) plant_.PowerOn();
  return true;
}

void SimulatedAxis::Trip(const std::string& display) {
  alarm_.Raise(display);
  SwitchServo(false);
}

bool SimulatedAxis::Jog(int direction, std::int32_t speed) {
  if (!servoOn_ || IsProgrammeRunning() || homing_.IsRunning()) return false;
  calmSteps_ = 0;
  jogs_ = true;
  profile_.Run(direction * CountsPerSecond(speed));
  return true;
}

void SimulatedAxis::Skip() {
  calmSteps_ = 0;
  jogs_ = false;
  homing_.Abort();
  profile_.Stop();
}

bool SimulatedAxis::StartProgramme(std::optional<std::size_t> row) {
  if (!servoOn_ || jogs_ || homing_.IsRunning()) return false;
  constexpr std::uint32_t kRowBits = kIndexRows - 1;
  const std::size_t first = settings_.startsAtSelection ? inputs_.selection & kRowBits : 0;
  calmSteps_ = 0;
  programme_.Start(row.value_or(first));
  return true;
}

void SimulatedAxis::HaltProgramme() {
  calmSteps_ = 0;
  programme_.Halt(profile_);
}

void SimulatedAxis::ResetProgramme() {
  calmSteps_ = 0;
  if (programme_.IsRunning()) profile_.Stop();
  programme_.Reset();
  if (settings_.resetClearsOutputs) programme_.ClearOutputs();
}

bool SimulatedAxis::ReturnToZero() {
  if (!servoOn_ || jogs_ || programme_.IsRunning()) return false;
  calmSteps_ = 0;
  homing_.Start(HomingNow());
  return true;
}

void SimulatedAxis::SetHomeOffset(std::int32_t counts) {
  RelabelBy(counts - settings_.homing.offset);
  settings_.homing.offset = counts;
}

void SimulatedAxis::RelabelBy(double counts) {
  profile_.Shift(counts);
  offset_ += counts;
}

// ---- the machine

bool SimulatedAxis::SetInput(std::string_view word, int bit, bool on) {
  if ((word != "IN1" && word != "IN2") || bit < 0 || bit > 7) return false;
  std::uint32_t& lines = word == "IN1" ? lines_.amplifier : lines_.card;
  const std::uint32_t mask = 1U << static_cast<unsigned>(bit);
  lines = on ? lines | mask : lines & ~mask;
  Refresh();
  return true;
}

void SimulatedAxis::SetLoad(const DrivenLoad& load) {
  load_ = load;
  calmSteps_ = 0;
}

void SimulatedAxis::SetSwitches(const MachineSwitches& switches) {
  switches_ = switches;
  ReadLines();
}

}  // namespace velmoor
