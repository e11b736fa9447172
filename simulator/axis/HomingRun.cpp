#include "simulator/axis/HomingRun.h"

#include <cmath>
#include <utility>

namespace velmoor {
namespace {

constexpr double kLongestSearch = 1000;  // turns
constexpr double kLongestPulseSearch = 3;

// The speed towards a signal that is near. With one signal alone there is no approach: what finds
// it is the creep speed.
double SlowSpeed(const HomingSettings& settings) {
  const bool both = settings.method == HomingMethod::switchAndPulse;
  return settings.direction * (both ? settings.approachSpeed : settings.creepSpeed);
}

}  // namespace

void HomingRun::Start(const HomingSurroundings& axis) {
  const HomingSettings& settings = axis.settings;
  arrived_ = false;
  begin_ = lastTurns_ = axis.turns;
  if (settings.method == HomingMethod::none) {
    // Where the axis is, is its home.
    arrived_ = true;
    phase_ = Phase::idle;
  } else if (settings.method == HomingMethod::pulseOnly) {
    axis.profile.Run(SlowSpeed(settings));
    phase_ = Phase::zeroPulse;
  } else {
    axis.profile.Run(settings.direction * settings.searchSpeed);
    phase_ = Phase::search;
  }
}

void HomingRun::FinalDistance(const HomingSurroundings& axis) {
  axis.profile.MoveTo(axis.position + axis.settings.finalDistance, axis.settings.creepSpeed);
  phase_ = Phase::finalDistance;
}

std::string HomingRun::Step(const HomingSurroundings& axis) {
  const double before = std::exchange(lastTurns_, axis.turns);
  const double way = std::abs(axis.turns - begin_);
  const HomingSettings& settings = axis.settings;
  switch (phase_) {
    case Phase::idle:
      break;
    case Phase::search:
      if (axis.homeSwitch) {
        axis.profile.Run(SlowSpeed(settings));
        phase_ = Phase::leaveSwitch;
      } else if (way > kLongestSearch) {
        Abort();
        return "E311";
      }
      break;
    case Phase::leaveSwitch:
      if (axis.homeSwitch) break;
      begin_ = axis.turns;
      phase_ = Phase::zeroPulse;
      if (settings.method == HomingMethod::switchOnly) FinalDistance(axis);
      break;
    case Phase::zeroPulse:
      if (std::floor(before) != std::floor(axis.turns)) {
        FinalDistance(axis);
      } else if (way > kLongestPulseSearch) {
        Abort();
        return "E312";
      }
      break;
    case Phase::finalDistance:
      if (axis.profile.IsDone() && axis.inPosition) {
        Abort();
        arrived_ = true;
      }
      break;
  }
  return {};
}

bool HomingRun::TakeArrival() {
  return std::exchange(arrived_, false);
}

}  // namespace velmoor
