// The system's clocks.
#pragma once

#include <ctime>

#include "platform/SystemClock.h"

namespace velmoor::posix {

// A moment of the system in local time.
[[nodiscard]] WallTime LocalMoment(std::time_t time);

class PosixClock final : public SystemClock {
 public:
  [[nodiscard]] double SecondsSinceMidnight() const override;
  [[nodiscard]] WallTime Now() const override;
};

}  // namespace velmoor::posix
