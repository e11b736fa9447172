// The system's clocks.
#pragma once

#include "platform/Events.h"

namespace velmoor::posix {

class PosixClock final : public Clock {
 public:
  [[nodiscard]] double SecondsSinceMidnight() const override;
  [[nodiscard]] WallTime Now() const override;
  [[nodiscard]] std::chrono::milliseconds Monotonic() const override;
};

}  // namespace velmoor::posix
