// The two clocks that every system tells alike.
#pragma once

#include "platform/Events.h"

namespace velmoor {

class SystemClock : public Clock {
 public:
  [[nodiscard]] std::chrono::milliseconds SinceEpoch() const final {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::system_clock::now().time_since_epoch());
  }
  [[nodiscard]] std::chrono::milliseconds Monotonic() const final {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
  }
};

}  // namespace velmoor
