#include "recordings/Trigger.h"

#include <cstdint>

namespace velmoor {

bool TriggerWatch::IsBeyond(double value) const {
  const auto isSet = [&] {
    const auto bits = static_cast<std::uint32_t>(value);
    return ((bits >> static_cast<std::uint32_t>(trigger_.level)) & 1U) != 0;
  };
  switch (trigger_.kind) {
    case TriggerKind::rises:
      return value >= trigger_.level;
    case TriggerKind::falls:
      return value <= trigger_.level;
    case TriggerKind::reaches:
      return value == trigger_.level;
    case TriggerKind::bitOn:
      return isSet();
    case TriggerKind::bitOff:
      return !isSet();
  }
  return false;
}

bool TriggerWatch::Take(double value) {
  const bool beyond = IsBeyond(value);
  const bool fires = beyond && wasBeyond_ == false;
  wasBeyond_ = beyond;
  return fires;
}

}  // namespace velmoor
