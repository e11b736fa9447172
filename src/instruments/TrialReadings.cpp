#include "instruments/TrialReadings.h"

#include <array>
#include <string>

#include "link/BriefTimeOut.h"
#include "online/AlarmReadings.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr std::array<ValueCommand, 4> kRound{ValueCommand::currentPosition,
                                             ValueCommand::motorSpeed, ValueCommand::followingError,
                                             ValueCommand::torque};
constexpr std::size_t kRoundsForAnAlarm = 4;

std::optional<std::int32_t> Taken(ResultCode result, std::int32_t value) {
  return result == kSuccess ? std::optional(value) : std::nullopt;
}

}  // namespace

ResultCode TrialReadings::AskNext(bool withStatus) {
  const BriefTimeOut brief(*gMainForm->Helix7());
  const ResultCode result = Ask(turn_ % (kRound.size() + 1), withStatus);
  ++turn_;
  return result;
}

ResultCode TrialReadings::Ask(std::size_t place, bool withStatus) {
  clsHX7Helix7& helix = *gMainForm->Helix7();
  const bool isLast = place == kRound.size();
  if (isLast && turn_ / (kRound.size() + 1) % kRoundsForAnAlarm == 0) {
    AlarmReading alarm;
    const ResultCode result = ReadAlarm(alarm);
    if (result == kSuccess) tripped_ = IsAlarm(alarm) && !IsWarning(alarm);
    return result;
  }
  if (isLast && !withStatus) return kSuccess;
  const ValueCommand command = isLast ? ValueCommand::status : kRound.at(place);
  std::int32_t value = 0;
  const ResultCode result = helix.GetHelixValue(static_cast<std::int32_t>(command), value);
  if (command == ValueCommand::currentPosition) position_ = Taken(result, value);
  if (command == ValueCommand::status) status_ = Taken(result, value);
  return result;
}

}  // namespace velmoor
