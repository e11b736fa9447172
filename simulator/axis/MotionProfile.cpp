#include "simulator/axis/MotionProfile.h"

#include <algorithm>
#include <cmath>

namespace velmoor {

void MotionProfile::PlaceAt(double position) {
  *this = {};
  position_ = position;
}

void MotionProfile::Shift(double by) {
  position_ += by;
  target_ += by;
}

void MotionProfile::MoveTo(double target, double speed) {
  isMove_ = true;
  target_ = target;
  wanted_ = std::max(speed, 0.0);
}

void MotionProfile::Run(double speed) {
  isMove_ = false;
  wanted_ = speed;
}

double MotionProfile::StoppingPoint(const ProfileRates& rates) const {
  return position_ + speed_ * std::abs(speed_) / (2 * rates.deceleration);
}

bool MotionProfile::IsDone() const {
  return speed_ == 0 && (isMove_ ? position_ == target_ : wanted_ == 0);
}

double MotionProfile::WantedDirection() const {
  return isMove_ ? target_ - position_ : wanted_;
}

// The speed from which steps of equal deceleration end exactly at the target.
double MotionProfile::WantedSpeed(double seconds, double deceleration) const {
  if (!isMove_) return wanted_;
  const double change = deceleration * seconds;
  const double distance = target_ - position_;
  const double braking =
      change / 2 * (std::sqrt(1 + 8 * std::abs(distance) / (change * seconds)) - 1);
  return std::copysign(std::min(wanted_, braking), distance);
}

void MotionProfile::Step(double seconds, const ProfileRates& rates) {
  if (IsDone()) return;
  const double wanted = WantedSpeed(seconds, rates.deceleration);
  const bool slowsDown = std::abs(wanted) < std::abs(speed_) || wanted * speed_ < 0;
  const double change = (slowsDown ? rates.deceleration : rates.acceleration) * seconds;
  speed_ = std::clamp(wanted, speed_ - change, speed_ + change);
  position_ += speed_ * seconds;
  // The last of the way is shorter than one step of the slowest speed.
  const double last = rates.deceleration * seconds * seconds;
  const bool arrives = isMove_ && std::abs(target_ - position_) <= last &&
                       std::abs(speed_) <= 2 * rates.deceleration * seconds;
  if (!arrives) return;
  position_ = target_;
  speed_ = 0;
}

}  // namespace velmoor
