// The system's clocks.
#pragma once

#include <ctime>

#include "platform/Events.h"

namespace velmoor::posix {

// A moment of the system in local time.
[[nodiscard]] WallTime LocalMoment(std::time_t time);

class PosixClock final : public Clock {
 public:
  [[nodiscard]] double SecondsSinceMidnight() const override;
  [[nodiscard]] WallTime Now() const override;
  [[nodiscard]] std::chrono::milliseconds SinceEpoch() const override;
  [[nodiscard]] std::chrono::milliseconds Monotonic() const override;
};

}  // namespace velmoor::posix
