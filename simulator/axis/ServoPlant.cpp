#include "simulator/axis/ServoPlant.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmoor {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;
// A small motor: the rated torque speeds up the rotor alone like this.
constexpr double kRatedAcceleration = 40000;     // rad/s^2
constexpr double kCoulombFriction = 0.03;        // of the rated torque
constexpr double kFrictionRise = 3;              // rad/s until it is whole
constexpr double kViscousFriction = 0.02 / 314;  // of the rated torque, for each rad/s
constexpr double kBraking = 0.5 / 314;           // by the shorted windings, likewise
constexpr double kShaftFrequency = kTurn * 100;  // rad/s, of the load on the held shaft
constexpr double kShaftDamping = 0.05;
constexpr double kSmallestLoad = 0.05;

}  // namespace

double ServoPlant::Position() const {
  return motorAngle_ / kTurn;
}

double ServoPlant::Speed() const {
  return motorSpeed_ / kTurn;
}

bool ServoPlant::Stands() const {
  constexpr double kSlow = 0.005;  // rad/s
  return std::abs(motorSpeed_) < kSlow && std::abs(loadSpeed_) < kSlow;
}

void ServoPlant::PowerOn() {
  integral_ = 0;
  torque_ = 0;
}

double ServoPlant::WantedTorque(double seconds, const ServoCommand& command,
                                const ServoGains& gains) {
  const double limit = gains.speedLimit * kTurn;
  const double follow = gains.position * (command.position * kTurn - motorAngle_);
  const double speed =
      std::clamp(follow + gains.feedForward * command.speed * kTurn, -limit, limit);
  const double error = speed - motorSpeed_;
  // A loop at its limit does not gather what it cannot use.
  if (!limited_ || error * torque_ < 0) integral_ += error * seconds / gains.integralTime;
  return (1 + gains.inertiaRatio) * gains.speed * (error + integral_) / kRatedAcceleration;
}

void ServoPlant::Step(double seconds, const std::optional<ServoCommand>& command,
                      const ServoGains& gains, const DrivenLoad& load) {
  if (command) {
    const double wanted = WantedTorque(seconds, *command, gains);
    const double limited = std::clamp(wanted, -gains.reverseLimit, gains.forwardLimit);
    limited_ = limited != wanted;
    torque_ += (limited - torque_) * seconds / (seconds + gains.filterTime);
  } else {
    limited_ = false;
    torque_ = 0;
  }
  Move(seconds, load);
  if (!command) motorSpeed_ -= motorSpeed_ * kBraking * kRatedAcceleration * seconds;
}

void ServoPlant::Move(double seconds, const DrivenLoad& load) {
  const double inertia = std::max(load.inertiaRatio, kSmallestLoad);
  const double twist = motorAngle_ - loadAngle_;
  const double shaft =
      kShaftFrequency * (kShaftFrequency * twist + 2 * kShaftDamping * (motorSpeed_ - loadSpeed_));
  const double friction =
      kCoulombFriction * std::tanh(motorSpeed_ / kFrictionRise) + kViscousFriction * motorSpeed_;
  motorSpeed_ += seconds * ((torque_ - friction) * kRatedAcceleration - inertia * shaft);
  loadSpeed_ += seconds * (shaft - load.loadTorque * kRatedAcceleration / inertia);
  motorAngle_ += seconds * motorSpeed_;
  loadAngle_ += seconds * loadSpeed_;
}

}  // namespace velmoor
