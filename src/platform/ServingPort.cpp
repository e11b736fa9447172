#include "platform/ServingPort.h"

#include <algorithm>

#include "platform/Events.h"

namespace velmoor {
namespace {

constexpr int kSlice = 50;  // ms; a window that is served after 100 ms does not feel frozen

class TimeOutOf {
 public:
  explicit TimeOutOf(SerialPort& port) : port_(port), before_(port.ReadTimeOut()) {}
  ~TimeOutOf() { port_.SetReadTimeOut(before_); }
  TimeOutOf(const TimeOutOf&) = delete;
  TimeOutOf& operator=(const TimeOutOf&) = delete;

  [[nodiscard]] int Before() const { return before_; }

 private:
  SerialPort& port_;
  int before_;
};

}  // namespace

std::string ServingPort::ReadLine() {
  if (!serves_) return PassingPort::ReadLine();
  const TimeOutOf timeOut(*this);
  for (int left = timeOut.Before(); left > 0; left -= kSlice) {
    SetReadTimeOut(std::min(left, kSlice));
    std::string line = PassingPort::ReadLine();
    if (!line.empty() || !IsOpen()) return line;
    YieldEvents();
  }
  return {};
}

}  // namespace velmoor
