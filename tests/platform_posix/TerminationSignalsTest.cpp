#include "platform/posix/TerminationSignals.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <cstdio>

namespace velmoor::posix {
namespace {

// An event loop of one descriptor.
struct Loop {
  std::shared_ptr<void> Watch(int number, std::function<void()> readable) {
    descriptor = number;
    onReadable = std::move(readable);
    return std::make_shared<int>();
  }
  void Serve() {
    pollfd look{.fd = descriptor, .events = POLLIN, .revents = 0};
    if (poll(&look, 1, 2000) > 0) onReadable();
  }
  int descriptor = -1;
  std::function<void()> onReadable;
};

void EndBy(int number) {
  Loop loop;
  const TerminationSignals signals(
      [&](int descriptor, std::function<void()> readable) {
        return loop.Watch(descriptor, std::move(readable));
      },
      [] { std::fputs("made safe", stderr); });
  raise(number);
  std::fputs("not yet, ", stderr);
  loop.Serve();
  std::fputs("still here", stderr);
}

TEST(TerminationSignalsDeathTest, TheLastWorkIsDoneInTheEventLoopBeforeTheSignalEndsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    EXPECT_EXIT(EndBy(number), testing::KilledBySignal(number), "^not yet, made safe$");
  }
}

}  // namespace
}  // namespace velmoor::posix
