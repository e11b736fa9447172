// A clock that stands until it is told to move, and an event pump that moves it while it waits.
#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "platform/Controls.h"
#include "platform/Events.h"

namespace velmoor::headless {

class HeadlessClock final : public Clock {
 public:
  [[nodiscard]] double SecondsSinceMidnight() const override;
  [[nodiscard]] WallTime Now() const override;
  [[nodiscard]] std::chrono::milliseconds SinceEpoch() const override;
  [[nodiscard]] std::chrono::milliseconds Monotonic() const override { return elapsed_; }

  void Advance(std::chrono::milliseconds time) { elapsed_ += time; }
  // The time of day at which the clock stands now; the date stays.
  void SetTimeOfDay(int hour, int minute, int second);

 private:
  std::chrono::milliseconds elapsed_{0};
  std::chrono::milliseconds midnightOffset_{std::chrono::hours(9)};
};

class HeadlessTimer;

// Serves posted work, timers that have run down, and what a script wants done at its yields.
class HeadlessEvents final : public EventPump {
 public:
  explicit HeadlessEvents(HeadlessClock& clock) : clock_(clock) {}

  void Yield() override;
  // Moves the clock by `limit` when nothing was served.
  void WaitForEvents(std::chrono::milliseconds limit) override;
  void Post(std::function<void()> work) override { posted_.push_back(std::move(work)); }
  void SetBusyPointer(bool busy) override { busyPointer_ = busy; }

  // Runs `work` in the yield that comes after `passes` others.
  void AtYield(int passes, std::function<void()> work);
  [[nodiscard]] int Yields() const { return yields_; }
  [[nodiscard]] bool BusyPointerShown() const { return busyPointer_; }

 private:
  friend class HeadlessTimer;
  struct Planned {
    int yield;
    std::function<void()> work;
  };

  bool ServePending();
  bool ServePosted();
  bool ServePlanned();
  bool ServeTimers();

  HeadlessClock& clock_;
  std::deque<std::function<void()>> posted_;
  std::vector<Planned> planned_;
  std::vector<HeadlessTimer*> timers_;
  int yields_ = 0;
  bool busyPointer_ = false;
};

class HeadlessTimer final : public Timer {
 public:
  explicit HeadlessTimer(HeadlessEvents& events);
  ~HeadlessTimer() override;
  HeadlessTimer(const HeadlessTimer&) = delete;
  HeadlessTimer& operator=(const HeadlessTimer&) = delete;

  void SetInterval(std::chrono::milliseconds interval) override;
  void SetEnabled(bool enabled) override;
  [[nodiscard]] bool Enabled() const override { return enabled_; }

 private:
  friend class HeadlessEvents;
  void Restart();

  HeadlessEvents& events_;
  std::chrono::milliseconds interval_{0};
  std::chrono::milliseconds due_{0};
  bool enabled_ = false;
};

}  // namespace velmoor::headless
