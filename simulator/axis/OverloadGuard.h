// How warm the motor's windings are: the square of the torque, smoothed over a long and a short
// time.
#pragma once

namespace velmoor {

class OverloadGuard {
 public:
  // `torque` as a share of the rated one, for `seconds`.
  void Pass(double seconds, double torque);

  [[nodiscard]] bool IsWarm() const { return heat_ > kWarm * kWarm; }
  [[nodiscard]] bool IsOverloaded() const { return heat_ > kMost * kMost; }
  [[nodiscard]] bool IsOverloadedShortly() const {
    return shortHeat_ > kMostShortly * kMostShortly;
  }

 private:
  static constexpr double kWarm = 1.05;  // shares of the rated torque that may last
  static constexpr double kMost = 1.15;
  static constexpr double kMostShortly = 2.5;

  double heat_ = 0;
  double shortHeat_ = 0;
};

}  // namespace velmoor
