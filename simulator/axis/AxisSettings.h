// What the parameters say about the axis, in the units that its simulation reckons with.
#pragma once

#include <array>
#include <cstdint>

#include "simulator/axis/MotionProfile.h"
#include "simulator/axis/ServoPlant.h"

namespace velmoor {

class ParameterMemory;

enum class TravelStop { decelerate, atOnce, servoOff };                              // Pn819
enum class AxisKind { linear, shortestPath, forwardOnly, reverseOnly, signedPath };  // Pn81A
enum class HomingMethod { none, switchAndPulse, switchOnly, pulseOnly };             // Pn823

struct HomingSettings {
  HomingMethod method = HomingMethod::none;
  double direction = 1;
  double searchSpeed = 0, approachSpeed = 0, creepSpeed = 0;  // counts/s
  double finalDistance = 0;                                   // counts
  double offset = 0;                                          // counts, Pn81D
};

// Positions in counts, speeds in counts/s.
struct AxisSettings {
  double countsPerTurn = 1;  // of the motor, through the electronic gear
  ProfileRates rates;
  ServoGains gains;
  double positiveLimit = 0, negativeLimit = 0;
  double inPosition = 0, near = 0;
  double errorAlarm = 0, errorWarning = 0;
  TravelStop travelStop = TravelStop::decelerate;
  AxisKind kind = AxisKind::linear;
  HomingSettings homing;
  bool startsAtSelection = false;   // Pn831
  bool resetClearsOutputs = false;  // Pn832

  // The positions of a rotary axis repeat after so many counts.
  [[nodiscard]] double Modulus() const { return positiveLimit + 1; }
};

// `encoderBits` of a motor turn.
[[nodiscard]] AxisSettings ReadAxisSettings(const ParameterMemory& parameters, int encoderBits);

// The amplifier's unit of speed is 1000 counts a minute.
[[nodiscard]] constexpr double CountsPerSecond(double thousandsPerMinute) {
  return thousandsPerMinute * 1000 / 60;
}

}  // namespace velmoor
