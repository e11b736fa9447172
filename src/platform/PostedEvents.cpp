#include "platform/PostedEvents.h"

#include <utility>

namespace velmoor {

void PostedEvents::WaitForEvents(std::chrono::milliseconds limit) {
  if (!ServePosted()) Sleep(limit);
}

bool PostedEvents::ServePosted() {
  // What the work posts itself waits for the next time.
  const std::deque<std::function<void()>> batch = std::exchange(posted_, {});
  for (const auto& work : batch) work();
  return !batch.empty();
}

}  // namespace velmoor
