// The motor with its speed and position loops, and the load that hangs on it by a shaft that
// twists: two masses, a spring, friction. Angles in turns of the motor, torques as a share of the
// rated one.
#pragma once

#include <optional>

namespace velmoor {

struct ServoGains {
  double position = 40;        // 1/s
  double speed = 250;          // rad/s
  double integralTime = 0.02;  // s
  double inertiaRatio = 0;     // of load to motor, as the loop takes it to be
  double feedForward = 0;      // share of the commanded speed, 0 to 1
  double filterTime = 0.001;   // s, of the torque
  double forwardLimit = 3;     // share of the rated torque
  double reverseLimit = 3;
  double speedLimit = 80;  // turns/s
};

// What hangs on the motor.
struct DrivenLoad {
  double inertiaRatio = 3;  // of load to motor, as it is
  double loadTorque = 0;    // pulls in reverse, share of the rated torque
};

struct ServoCommand {
  double position = 0;  // turns
  double speed = 0;     // turns/s
};

class ServoPlant {
 public:
  // Lets `seconds` pass, at most a quarter of a millisecond. Without a command the motor has no
  // power and its windings brake it.
  void Step(double seconds, const std::optional<ServoCommand>& command, const ServoGains& gains,
            const DrivenLoad& load);
  // Begins to hold: the loops start from nothing.
  void PowerOn();

  [[nodiscard]] double Position() const;  // turns
  [[nodiscard]] double Speed() const;     // turns/s
  [[nodiscard]] double Torque() const { return torque_; }
  // The loops ask for more than the limit.
  [[nodiscard]] bool IsTorqueLimited() const { return limited_; }
  // Neither motor nor load moves any more.
  [[nodiscard]] bool Stands() const;

 private:
  [[nodiscard]] double WantedTorque(double seconds, const ServoCommand& command,
                                    const ServoGains& gains);
  void Move(double seconds, const DrivenLoad& load);

  double motorAngle_ = 0, motorSpeed_ = 0;  // rad, rad/s
  double loadAngle_ = 0, loadSpeed_ = 0;
  double integral_ = 0;  // rad/s
  double torque_ = 0;
  bool limited_ = false;
};

}  // namespace velmoor
