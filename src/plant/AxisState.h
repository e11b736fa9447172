// What is known of a watched axis.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "online/AlarmReadings.h"
#include "operations/LineFile.h"

namespace velmoor {

enum class Standing : std::uint8_t {
  unseen,  // nobody could look at it yet, or just now: the port is gone, or lent
  silent,  // asked, and no answer
  answers
};

struct AxisState {
  LineAxis axis;
  Standing standing = Standing::unseen;
  AlarmReading reading{};                // the panel display, while it answers
  std::map<int, std::int32_t> values{};  // by item, as the amplifier tells them
  std::uint64_t questions = 0;
  std::uint64_t failures = 0;  // of them: no answer, or none that can be read
};

// "servo on", "servo off", "end switch", "alarm", "warning", "silent", "unseen" or the panel
// display of what is none of these.
[[nodiscard]] std::string StateWord(const AxisState& axis);

}  // namespace velmoor
