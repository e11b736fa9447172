// What the axis does in each step of time beside moving: follow its inputs, run its programme, stop
// at its limits, trip on its faults.

#include <cmath>
#include <utility>

#include "simulator/axis/SimulatedAxis.h"
#include "simulator/memory/TableForms.h"

namespace velmoor {
namespace {

constexpr double kOverspeed = 110;  // turns/s
constexpr double kLimitSlack = 1;   // counts, of a profile that ends on the limit

}  // namespace

// ---- inputs

InputLines SimulatedAxis::Lines() const {
  constexpr std::uint32_t kForwardEnd = 1U << 2U, kReverseEnd = 1U << 3U, kHome = 1U << 4U;
  InputLines lines = lines_;
  const double turns = plant_.Position();
  if (switches_.forwardEnd && turns >= *switches_.forwardEnd) lines.amplifier &= ~kForwardEnd;
  if (switches_.reverseEnd && turns <= *switches_.reverseEnd) lines.amplifier &= ~kReverseEnd;
  const double away = std::abs(turns);
  if (away >= switches_.homeBegin && away < switches_.homeEnd) lines.amplifier |= kHome;
  return lines;
}

void SimulatedAxis::ReadLines() {
  const InputLines lines = Lines();
  if (readLines_ && readLines_->amplifier == lines.amplifier && readLines_->card == lines.card) {
    return;
  }
  readLines_ = lines;
  const AxisInputs before = inputs_;
  inputs_ = ReadInputs(memory_.parameters, lines);
  FollowLines(before);
}

void SimulatedAxis::FollowLines(const AxisInputs& before) {
  if (inputs_.servoOn != before.servoOn) SwitchServo(inputs_.servoOn);
  if (inputs_.alwaysOn && !servoOn_) SwitchServo(true);
  if (inputs_.registration && !before.registration) registered_ = true;
  if (inputs_.jogMode || before.jogMode) FollowJogLines(before);
  if (inputs_.start && !before.start) StartProgramme();
  if (!inputs_.start && before.start) HaltProgramme();
  if (inputs_.reset && !before.reset) ResetProgramme();
}

void SimulatedAxis::FollowJogLines(const AxisInputs& before) {
  if (inputs_.home && !before.home) ReturnToZero();
  const bool wanted = inputs_.jogForward != inputs_.jogReverse;
  const bool changed = inputs_.jogForward != before.jogForward ||
                       inputs_.jogReverse != before.jogReverse || inputs_.jogRow != before.jogRow;
  if (!changed) return;
  if (!wanted) {
    if (jogs_) Skip();
    return;
  }
  const std::int64_t speed = TableNumber(memory_.jog.working[inputs_.jogRow]);
  Jog(inputs_.jogForward ? 1 : -1, static_cast<std::int32_t>(speed));
}

// ---- programme and zero point

void SimulatedAxis::RunProgramme() {
  const bool registered = std::exchange(registered_, false);
  if (!servoOn_ || !programme_.IsRunning()) return;
  const std::string fault = programme_.Step(kStepSeconds, {.table = memory_.index.working,
                                                           .settings = settings_,
                                                           .profile = profile_,
                                                           .selection = inputs_.selection,
                                                           .inPosition = inPosition_,
                                                           .near = near_,
                                                           .registered = registered,
                                                           .position = Actual()});
  if (fault.empty()) return;
  alarm_.error = fault;
  profile_.Stop();
}

HomingSurroundings SimulatedAxis::HomingNow() {
  return {.settings = settings_.homing,
          .profile = profile_,
          .homeSwitch = inputs_.homeSwitch,
          .turns = plant_.Position(),
          .position = Actual(),
          .inPosition = inPosition_};
}

void SimulatedAxis::RunHoming() {
  if (homing_.IsRunning()) {
    const std::string fault = homing_.Step(HomingNow());
    if (!fault.empty()) {
      alarm_.error = fault;
      profile_.Stop();
    }
  }
  if (homing_.TakeArrival()) RelabelBy(settings_.homing.offset - profile_.Position());
}

// ---- limits

void SimulatedAxis::GuardTravel() {
  if (!servoOn_) return;
  if (inputs_.forwardEnd && inputs_.reverseEnd) return Trip("A.80");
  const bool atOnce = settings_.travelStop == TravelStop::atOnce;
  if (inputs_.forwardEnd && profile_.GoesForward()) EndTravel("E100", atOnce);
  if (inputs_.reverseEnd && profile_.GoesBackward()) EndTravel("E101", atOnce);
  if (settings_.kind == AxisKind::linear) {
    const double end = profile_.StoppingPoint(settings_.rates);
    const bool passes = end > settings_.positiveLimit + kLimitSlack;
    if (passes && profile_.GoesForward()) EndTravel("E102", false);
    const bool passesBack = end < settings_.negativeLimit - kLimitSlack;
    if (passesBack && profile_.GoesBackward()) EndTravel("E103", false);
  }
  if (switchesOffAtRest_ && profile_.IsDone() && plant_.Stands()) SwitchServo(false);
}

void SimulatedAxis::EndTravel(const char* error, bool atOnce) {
  alarm_.error = error;
  DropMotion();
  if (atOnce) {
    profile_.PlaceAt(profile_.Position());
  } else {
    profile_.Stop();
  }
  switchesOffAtRest_ = settings_.travelStop == TravelStop::servoOff;
}

// ---- what it watches

void SimulatedAxis::Observe() {
  const double remaining = std::abs(profile_.Target() - Actual());
  inPosition_ = servoOn_ && profile_.IsDone() && remaining <= settings_.inPosition;
  near_ = servoOn_ && !profile_.IsEndless() && remaining <= settings_.near;
  overload_.Pass(kStepSeconds, plant_.Torque());
}

void SimulatedAxis::Protect() {
  if (!servoOn_) return;
  const double error = std::abs(PositionError());
  alarm_.warning.clear();
  if (overload_.IsWarm()) alarm_.warning = "A.91";
  if (error > settings_.errorWarning) alarm_.warning = "A.90";
  if (error > settings_.errorAlarm) return Trip("A.50");
  if (std::abs(plant_.Speed()) > kOverspeed) return Trip("A.40");
  if (overload_.IsOverloadedShortly()) return Trip("A.43");
  if (overload_.IsOverloaded()) return Trip("A.44");
}

}  // namespace velmoor
