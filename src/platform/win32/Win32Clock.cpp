#include "platform/win32/Win32Clock.h"

#include "platform/win32/Windows.h"

namespace velmoor::win32 {
namespace {

WallTime WallTimeOf(const SYSTEMTIME& local) {
  return {.year = local.wYear,
          .month = local.wMonth,
          .day = local.wDay,
          .hour = local.wHour,
          .minute = local.wMinute,
          .second = local.wSecond};
}

SYSTEMTIME LocalNow() {
  SYSTEMTIME local{};
  GetLocalTime(&local);
  return local;
}

}  // namespace

WallTime LocalMoment(const _FILETIME& time) {
  SYSTEMTIME universal{};
  SYSTEMTIME local{};
  FileTimeToSystemTime(&time, &universal);
  SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local);
  return WallTimeOf(local);
}

double Win32Clock::SecondsSinceMidnight() const {
  const SYSTEMTIME local = LocalNow();
  return local.wHour * 3600.0 + local.wMinute * 60.0 + local.wSecond + local.wMilliseconds / 1e3;
}

WallTime Win32Clock::Now() const {
  return WallTimeOf(LocalNow());
}

}  // namespace velmoor::win32
