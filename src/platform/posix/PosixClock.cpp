#include "platform/posix/PosixClock.h"

#include <ctime>

namespace velmoor::posix {
namespace {

std::tm LocalTime(std::time_t time) {
  std::tm local{};
  ::localtime_r(&time, &local);
  return local;
}

}  // namespace

double PosixClock::SecondsSinceMidnight() const {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  const std::tm local = LocalTime(now.tv_sec);
  return local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec +
         static_cast<double>(now.tv_nsec) / 1e9;
}

WallTime LocalMoment(std::time_t time) {
  const std::tm local = LocalTime(time);
  return {.year = local.tm_year + 1900,
          .month = local.tm_mon + 1,
          .day = local.tm_mday,
          .hour = local.tm_hour,
          .minute = local.tm_min,
          .second = local.tm_sec};
}

WallTime PosixClock::Now() const {
  return LocalMoment(std::time(nullptr));
}

}  // namespace velmoor::posix
