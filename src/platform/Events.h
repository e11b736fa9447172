// Port: the event loop and the clock. The logic waits and yields only through these.
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace velmoor {

class EventPump {
 public:
  virtual ~EventPump() = default;
  // Serves what is pending and returns.
  virtual void Yield() = 0;
  // Serves events for up to `limit`; returns early when something was served.
  virtual void WaitForEvents(std::chrono::milliseconds limit) = 0;
  // Runs `work` once, at the next time events are served. Callable from the one thread only.
  virtual void Post(std::function<void()> work) = 0;
  // The hourglass pointer, and back to the default.
  virtual void SetBusyPointer(bool busy) = 0;
};

struct WallTime {
  int year = 0, month = 0, day = 0;  // month and day from 1
  int hour = 0, minute = 0, second = 0;
};

// "2026-03-01 14:05:09".
[[nodiscard]] std::string MomentText(const WallTime& time);

class Clock {
 public:
  virtual ~Clock() = default;
  // Seconds since local midnight, with fractions; falls back to 0 at midnight.
  [[nodiscard]] virtual double SecondsSinceMidnight() const = 0;
  [[nodiscard]] virtual WallTime Now() const = 0;
  // Of the wall clock, since the beginning of 1970 in UTC; whoever sets the clock sets it back too.
  [[nodiscard]] virtual std::chrono::milliseconds SinceEpoch() const = 0;
  // Milliseconds of a clock that never goes back.
  [[nodiscard]] virtual std::chrono::milliseconds Monotonic() const = 0;
};

// Lets pending events run: the one way in which a procedure yields.
void YieldEvents();

// The monotonic clock, which stands still while a box waits for its answer: how long the program's
// own work takes.
[[nodiscard]] std::chrono::milliseconds WorkTime();

// Waits `seconds` while events run, at most 10 ms between two looks at the clock. Passing midnight,
// when the clock falls below its start, is allowed for.
void PauseInSec(float seconds);

// Shows the hourglass for the life of the object.
class BusyPointer {
 public:
  BusyPointer();
  ~BusyPointer();
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
};

}  // namespace velmoor
