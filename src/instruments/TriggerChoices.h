// What a recording can begin by, as a list offers it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "recordings/Trigger.h"

namespace velmoor {

struct TriggerChoice {
  enum class Kind { hand, value, bit, alarm, step };
  std::string text;  // "Motor Speed", "Status Flags: In Position"
  Kind kind = Kind::hand;
  RecordedItem item = {};
  int bit = 0;
};
// The first one is by hand.
[[nodiscard]] std::vector<TriggerChoice> TriggerChoices(const std::vector<RecordedItem>& items);
// What can happen to it: "rises to" and "falls to", or "turns on" and "turns off"; empty where
// there is nothing to choose.
[[nodiscard]] std::vector<std::string> EventsOf(const TriggerChoice& choice);
// Of all kinds but by hand and by a step. `event`: its place among EventsOf. Nothing: `level` is no
// number, which a value needs.
[[nodiscard]] std::optional<Trigger> TriggerOf(const TriggerChoice& choice, int event,
                                               const std::string& level);

}  // namespace velmoor
