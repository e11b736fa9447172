// The system's clocks.
#pragma once

#include "platform/SystemClock.h"

struct _FILETIME;

namespace velmoor::win32 {

// A moment of the system in local time.
[[nodiscard]] WallTime LocalMoment(const _FILETIME& time);

class Win32Clock final : public SystemClock {
 public:
  [[nodiscard]] double SecondsSinceMidnight() const override;
  [[nodiscard]] WallTime Now() const override;
};

}  // namespace velmoor::win32
