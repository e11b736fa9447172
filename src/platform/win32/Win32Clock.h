// The system's clocks.
#pragma once

#include "platform/Events.h"

struct _FILETIME;

namespace velmoor::win32 {

// A moment of the system in local time.
[[nodiscard]] WallTime LocalMoment(const _FILETIME& time);

class Win32Clock final : public Clock {
 public:
  [[nodiscard]] double SecondsSinceMidnight() const override;
  [[nodiscard]] WallTime Now() const override;
  [[nodiscard]] std::chrono::milliseconds SinceEpoch() const override;
  [[nodiscard]] std::chrono::milliseconds Monotonic() const override;
};

}  // namespace velmoor::win32
