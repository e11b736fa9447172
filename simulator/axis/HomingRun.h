// The zero point return: looks for the switch, the encoder's zero pulse, or both, and goes the
// final distance.
#pragma once

#include <string>

#include "simulator/axis/AxisSettings.h"

namespace velmoor {

// One moment of the axis.
struct HomingSurroundings {
  const HomingSettings& settings;
  MotionProfile& profile;
  bool homeSwitch = false;
  double turns = 0;     // of the motor since power-on
  double position = 0;  // counts, where the axis is
  bool inPosition = false;
};

class HomingRun {
 public:
  void Start(const HomingSurroundings& axis);
  void Abort() { phase_ = Phase::idle; }

  [[nodiscard]] bool IsRunning() const { return phase_ != Phase::idle; }
  // Goes on by one moment. "E311" and its like where the signals do not come: the return has ended
  // then.
  [[nodiscard]] std::string Step(const HomingSurroundings& axis);
  // True once after a return that succeeded: the axis stands at its home position.
  [[nodiscard]] bool TakeArrival();

 private:
  enum class Phase { idle, search, leaveSwitch, zeroPulse, finalDistance };

  void FinalDistance(const HomingSurroundings& axis);

  Phase phase_ = Phase::idle;
  bool arrived_ = false;
  double begin_ = 0;      // turns
  double lastTurns_ = 0;  // turns
};

}  // namespace velmoor
