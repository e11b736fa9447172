#include "platform/win32/Win32Events.h"

#include <thread>
#include <utility>

namespace velmoor::win32 {

void Win32Events::WaitForEvents(std::chrono::milliseconds limit) {
  if (!ServePosted()) std::this_thread::sleep_for(limit);
}

bool Win32Events::ServePosted() {
  // What the work posts itself waits for the next time.
  const std::deque<std::function<void()>> batch = std::exchange(posted_, {});
  for (const auto& work : batch) work();
  return !batch.empty();
}

}  // namespace velmoor::win32
