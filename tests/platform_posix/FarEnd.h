// A pseudo-terminal as the line to an amplifier.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/posix/FileDescriptor.h"

namespace velmoor::posix {

// The amplifier's end of a line. Keeps one descriptor of the near end open, as simulators do.
class FarEnd {
 public:
  FarEnd() : master_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    if (!master_.IsValid() || grantpt(master_.Get()) != 0 || unlockpt(master_.Get()) != 0) {
      ADD_FAILURE() << "no pseudo-terminal";
      return;
    }
    path = ptsname(master_.Get());
    keeper_ = FileDescriptor(open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    termios raw{};
    tcgetattr(keeper_.Get(), &raw);
    cfmakeraw(&raw);
    tcsetattr(keeper_.Get(), TCSANOW, &raw);
  }
  // Returns when the bytes lie at the near end: the system carries them over in its own time.
  void Send(std::string_view bytes) {
    const int expected = Arrived() + static_cast<int>(bytes.size());
    ASSERT_EQ(write(master_.Get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    while (Arrived() < expected) sched_yield();
  }
  std::string Received() {
    char buffer[256];
    const ssize_t count = read(master_.Get(), buffer, sizeof buffer);
    return {buffer, static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
  }
  speed_t Speed() const {
    termios attributes{};
    tcgetattr(master_.Get(), &attributes);
    return cfgetospeed(&attributes);
  }
  void HangUp() {
    keeper_.Reset();
    master_.Reset();
  }

  std::string path;

 private:
  [[nodiscard]] int Arrived() const {
    int count = 0;
    ioctl(keeper_.Get(), FIONREAD, &count);
    return count;
  }

  FileDescriptor master_;
  FileDescriptor keeper_;
};

}  // namespace velmoor::posix
