#include "simulator/axis/OverloadGuard.h"

#include <cmath>

namespace velmoor {
namespace {

constexpr double kHeatTime = 20;      // s
constexpr double kShortHeatTime = 2;  // s

void Follow(double& heat, double seconds, double time, double torque) {
  heat += (torque * torque - heat) * -std::expm1(-seconds / time);
}

}  // namespace

void OverloadGuard::Pass(double seconds, double torque) {
  Follow(heat_, seconds, kHeatTime, torque);
  Follow(shortHeat_, seconds, kShortHeatTime, torque);
}

}  // namespace velmoor
