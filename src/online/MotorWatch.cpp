#include "online/MotorWatch.h"

#include <array>

#include "link/BriefTimeOut.h"
#include "link/CommandWords.h"
#include "link/clsHX7Helix7.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr const char* kUnknown = "not known";

enum class Question { speed, position, alarm };
constexpr std::array<Question, 4> kTurns{Question::speed, Question::position, Question::speed,
                                         Question::alarm};

// Read into `value` only where the answer came.
ResultCode Ask(ValueCommand command, std::int32_t& value, bool& known) {
  std::int32_t read = 0;
  const ResultCode result =
      gMainForm->Helix7()->GetHelixValue(static_cast<std::int32_t>(command), read);
  known = result == kSuccess;
  if (known) value = read;
  return result;
}

// The states of the drive that are no alarms.
std::string StateWords(const std::string& display) {
  if (display == "BB") return "none, servo off";
  if (display == "RUN") return "none, servo on";
  if (display == "P-OT" || display == "N-OT") return display + ", at the end switch";
  return {};
}

}  // namespace

MotorWatch::MotorWatch(MonitoredUnits units, bool clockwiseForward)
    : units_(units), machineUnits_(std::move(units)), clockwiseForward_(clockwiseForward) {
  units_.SetMachineUnits(false);
  machineUnits_.SetMachineUnits(true);
}

void MotorWatch::Forget() {
  speedKnown_ = positionKnown_ = alarmKnown_ = false;
  turn_ = 0;
}

ResultCode MotorWatch::AskNext() {
  const BriefTimeOut brief(*gMainForm->Helix7());
  ResultCode result = kSuccess;
  latest_.reset();
  switch (kTurns.at(static_cast<std::size_t>(turn_))) {
    case Question::speed:
      result = Ask(ValueCommand::motorSpeed, speed_, speedKnown_);
      if (speedKnown_) latest_ = Reading{kSpeedItem, speed_};
      break;
    case Question::position:
      result = Ask(ValueCommand::currentPosition, position_, positionKnown_);
      if (positionKnown_) latest_ = Reading{kPositionItem, position_};
      break;
    case Question::alarm:
      result = ReadAlarm(alarm_);
      alarmKnown_ = result == kSuccess;
      break;
  }
  turn_ = (turn_ + 1) % static_cast<int>(kTurns.size());
  return result;
}

bool MotorWatch::IsAlarm() const {
  return alarmKnown_ && velmoor::IsAlarm(alarm_);
}

bool MotorWatch::HasTripped() const {
  return IsAlarm() && !IsWarning(alarm_);
}

std::string MotorWatch::BothUnits(std::int32_t raw, ValueKind kind) const {
  return units_.Text(raw, kind) + " " + units_.UnitOf(kind) + "  (" +
         machineUnits_.Text(raw, kind) + " " + machineUnits_.UnitOf(kind) + ")";
}

std::string MotorWatch::SpeedText() const {
  return speedKnown_ ? BothUnits(speed_, ValueKind::speed) : kUnknown;
}

std::string MotorWatch::PositionText() const {
  return positionKnown_ ? BothUnits(position_, ValueKind::distance) : kUnknown;
}

std::string MotorWatch::MotionText() const {
  if (!speedKnown_) return kUnknown;
  if (speed_ == 0) return "Standing";
  const bool forward = speed_ > 0;
  return std::string("Moving ") + (forward ? "forward" : "in reverse") + ", " +
         (forward == clockwiseForward_ ? "clockwise" : "counterclockwise");
}

std::string MotorWatch::AlarmText() const {
  if (!alarmKnown_) return kUnknown;
  const std::string state = StateWords(alarm_.display);
  if (!state.empty()) return state;
  return alarm_.display + (alarm_.name.empty() ? "" : ": " + alarm_.name);
}

}  // namespace velmoor
