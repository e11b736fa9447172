#include "platform/posix/PosixEvents.h"

#include <poll.h>

#include <utility>

namespace velmoor::posix {

void PosixEvents::WaitForEvents(std::chrono::milliseconds limit) {
  if (!ServePosted()) ::poll(nullptr, 0, static_cast<int>(limit.count()));
}

bool PosixEvents::ServePosted() {
  // What the work posts itself waits for the next time.
  const std::deque<std::function<void()>> batch = std::exchange(posted_, {});
  for (const auto& work : batch) work();
  return !batch.empty();
}

}  // namespace velmoor::posix
