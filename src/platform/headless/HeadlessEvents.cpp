#include "platform/headless/HeadlessEvents.h"

#include <algorithm>
#include <utility>

namespace velmoor::headless {
namespace {

constexpr std::chrono::milliseconds kDay{std::chrono::hours(24)};

}  // namespace

double HeadlessClock::SecondsSinceMidnight() const {
  return static_cast<double>(((elapsed_ + midnightOffset_) % kDay).count()) / 1000;
}

WallTime HeadlessClock::Now() const {
  const auto time = elapsed_ + midnightOffset_;
  const int seconds = static_cast<int>((time % kDay).count() / 1000);
  return {.year = 2024,
          .month = 3,
          .day = 1 + static_cast<int>(time / kDay),
          .hour = seconds / 3600,
          .minute = seconds / 60 % 60,
          .second = seconds % 60};
}

// 2024-03-01 began then; local time is that of UTC.
std::chrono::milliseconds HeadlessClock::SinceEpoch() const {
  constexpr std::chrono::sys_days kFirst{std::chrono::year{2024} / 3 / 1};
  return std::chrono::duration_cast<std::chrono::milliseconds>(kFirst.time_since_epoch()) +
         elapsed_ + midnightOffset_;
}

void HeadlessClock::SetTimeOfDay(int hour, int minute, int second) {
  const std::chrono::milliseconds wanted =
      std::chrono::hours(hour) + std::chrono::minutes(minute) + std::chrono::seconds(second);
  midnightOffset_ = (wanted - elapsed_ % kDay + kDay) % kDay;
}

void HeadlessEvents::Yield() {
  ServePending();
}

void HeadlessEvents::WaitForEvents(std::chrono::milliseconds limit) {
  if (ServePending()) return;
  clock_.Advance(limit);
  ServeTimers();
}

void HeadlessEvents::AtYield(int passes, std::function<void()> work) {
  planned_.push_back({yields_ + passes + 1, std::move(work)});
}

bool HeadlessEvents::ServePending() {
  ++yields_;
  const bool posted = ServePosted();
  const bool planned = ServePlanned();
  const bool timers = ServeTimers();
  return posted || planned || timers;
}

bool HeadlessEvents::ServePosted() {
  // What the work posts itself waits for the next time.
  const std::deque<std::function<void()>> batch = std::exchange(posted_, {});
  for (const auto& work : batch) work();
  return !batch.empty();
}

bool HeadlessEvents::ServePlanned() {
  std::vector<Planned> due;
  std::erase_if(planned_, [&](Planned& plan) {
    if (plan.yield > yields_) return false;
    due.push_back(std::move(plan));
    return true;
  });
  for (const Planned& plan : due) plan.work();
  return !due.empty();
}

bool HeadlessEvents::ServeTimers() {
  bool served = false;
  for (HeadlessTimer* timer : std::vector(timers_)) {
    const bool alive = std::find(timers_.begin(), timers_.end(), timer) != timers_.end();
    if (!alive || !timer->enabled_ || timer->due_ > clock_.Monotonic()) continue;
    timer->Restart();
    served = true;
    timer->Tick.Raise();
  }
  return served;
}

HeadlessTimer::HeadlessTimer(HeadlessEvents& events) : events_(events) {
  events_.timers_.push_back(this);
}
HeadlessTimer::~HeadlessTimer() {
  std::erase(events_.timers_, this);
}
void HeadlessTimer::SetInterval(std::chrono::milliseconds interval) {
  interval_ = interval;
  Restart();
}
void HeadlessTimer::SetEnabled(bool enabled) {
  enabled_ = enabled;
  Restart();
}
void HeadlessTimer::Restart() {
  due_ = events_.clock_.Monotonic() + interval_;
}

}  // namespace velmoor::headless
