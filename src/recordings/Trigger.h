// What begins a recording by itself.
#pragma once

#include <optional>
#include <string>

#include "recordings/Recording.h"

namespace velmoor {

enum class TriggerKind {
  rises,    // from below the level to it or above
  falls,    // from above the level to it or below
  reaches,  // becomes the level, which a target position does when its step begins
  bitOn,    // the bit becomes 1
  bitOff,
};

struct Trigger {
  std::string item;  // by its name in the recording
  TriggerKind kind = TriggerKind::rises;
  double level = 0;   // in the item's unit; of a bit its number, from 0
  std::string words;  // "Motor Speed rises to 100 rpm"
};

// Looks for the moment. A value that is beyond already when the watch begins does not count: it has
// to come from the other side.
class TriggerWatch {
 public:
  explicit TriggerWatch(Trigger trigger) : trigger_(std::move(trigger)) {}

  [[nodiscard]] const Trigger& Watched() const { return trigger_; }
  // Takes the next value of the item; true: this is the moment.
  bool Take(double value);

 private:
  [[nodiscard]] bool IsBeyond(double value) const;

  Trigger trigger_;
  std::optional<bool> wasBeyond_;
};

}  // namespace velmoor
