#include "simulator/axis/AxisSettings.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "simulator/memory/AmplifierMemory.h"

namespace velmoor {
namespace {

constexpr double kPercent = 0.01;
constexpr double kHundredthOfMs = 1e-5;  // s
constexpr double kErrorUnit = 256;       // counts, of Pn20C

double At(const ParameterMemory& parameters, std::uint32_t pn) {
  return static_cast<double>(parameters.Value(pn));
}

double SpeedAt(const ParameterMemory& parameters, std::uint32_t pn) {
  return CountsPerSecond(At(parameters, pn));
}

// 1000 counts a minute in a millisecond.
double RateAt(const ParameterMemory& parameters, std::uint32_t pn) {
  return SpeedAt(parameters, pn) * 1000;
}

template <typename Choice>
Choice ChoiceAt(const ParameterMemory& parameters, std::uint32_t pn, Choice last) {
  const std::int64_t index = parameters.Value(pn);
  return static_cast<Choice>(std::clamp<std::int64_t>(index, 0, static_cast<int>(last)));
}

ServoGains GainsOf(const ParameterMemory& parameters) {
  ServoGains gains;
  gains.speed = At(parameters, 0x100) * 2 * std::numbers::pi;
  gains.integralTime = std::max(At(parameters, 0x101), 1.0) * kHundredthOfMs;
  gains.position = At(parameters, 0x102);
  gains.inertiaRatio = At(parameters, 0x103) * kPercent;
  gains.feedForward = At(parameters, 0x109) * kPercent;
  gains.filterTime = At(parameters, 0x401) * kHundredthOfMs;
  gains.forwardLimit = At(parameters, 0x402) * kPercent;
  gains.reverseLimit = At(parameters, 0x403) * kPercent;
  gains.speedLimit = At(parameters, 0x30D) / 60;
  return gains;
}

HomingSettings HomingOf(const ParameterMemory& parameters) {
  HomingSettings homing;
  homing.method = ChoiceAt(parameters, 0x823, HomingMethod::pulseOnly);
  homing.direction = parameters.Value(0x824) == 0 ? 1 : -1;
  homing.approachSpeed = SpeedAt(parameters, 0x825);
  homing.searchSpeed = SpeedAt(parameters, 0x826);
  homing.creepSpeed = SpeedAt(parameters, 0x827);
  homing.finalDistance = At(parameters, 0x828);
  homing.offset = At(parameters, 0x81D);
  return homing;
}

}  // namespace

AxisSettings ReadAxisSettings(const ParameterMemory& parameters, int encoderBits) {
  AxisSettings settings;
  const double gear = std::max(At(parameters, 0x203), 1.0) / std::max(At(parameters, 0x202), 1.0);
  settings.countsPerTurn = std::ldexp(gear, encoderBits);
  settings.rates = {RateAt(parameters, 0x81F), RateAt(parameters, 0x820)};
  settings.gains = GainsOf(parameters);
  settings.positiveLimit = At(parameters, 0x81B);
  settings.negativeLimit = At(parameters, 0x81C);
  settings.inPosition = At(parameters, 0x821);
  settings.near = At(parameters, 0x822);
  settings.errorAlarm = At(parameters, 0x20C) * kErrorUnit;
  settings.errorWarning = settings.errorAlarm * At(parameters, 0x20B) * kPercent;
  settings.travelStop = ChoiceAt(parameters, 0x819, TravelStop::servoOff);
  settings.kind = ChoiceAt(parameters, 0x81A, AxisKind::signedPath);
  settings.homing = HomingOf(parameters);
  settings.startsAtSelection = parameters.Value(0x831) == 1;
  settings.resetClearsOutputs = parameters.Value(0x832) == 1;
  return settings;
}

}  // namespace velmoor
