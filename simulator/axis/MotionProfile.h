// The commanded motion of an axis: position and speed over time, limited in acceleration.
#pragma once

namespace velmoor {

// In counts/s^2.
struct ProfileRates {
  double acceleration = 0;
  double deceleration = 0;
};

// Positions in counts, speeds in counts/s.
class MotionProfile {
 public:
  // Stands there at once.
  void PlaceAt(double position);
  // The same place has another number from now on.
  void Shift(double by);
  // Ends at rest at `target`; a speed of 0 or less never arrives.
  void MoveTo(double target, double speed);
  // Goes on at that speed without end.
  void Run(double speed);
  void Stop() { Run(0); }
  // Lets `seconds` pass.
  void Step(double seconds, const ProfileRates& rates);

  [[nodiscard]] double Position() const { return position_; }
  [[nodiscard]] double Speed() const { return speed_; }
  // Where a move ends; without one, the present position.
  [[nodiscard]] double Target() const { return isMove_ ? target_ : position_; }
  // Where it would stand if it braked from now on.
  [[nodiscard]] double StoppingPoint(const ProfileRates& rates) const;
  // Runs without a target, or brakes.
  [[nodiscard]] bool IsEndless() const { return !isMove_ && !IsDone(); }
  // Stands, and is to stand.
  [[nodiscard]] bool IsDone() const;
  // Moves forward or is about to.
  [[nodiscard]] bool GoesForward() const { return WantedDirection() > 0 || speed_ > 0; }
  [[nodiscard]] bool GoesBackward() const { return WantedDirection() < 0 || speed_ < 0; }

 private:
  [[nodiscard]] double WantedDirection() const;
  [[nodiscard]] double WantedSpeed(double seconds, double deceleration) const;

  bool isMove_ = false;
  double position_ = 0;
  double speed_ = 0;
  double target_ = 0;
  double wanted_ = 0;  // of a move its greatest speed, otherwise the speed to be held
};

}  // namespace velmoor
