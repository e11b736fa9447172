#include "platform/posix/PosixEvents.h"

#include <poll.h>

namespace velmoor::posix {

void PosixEvents::Sleep(std::chrono::milliseconds limit) {
  ::poll(nullptr, 0, static_cast<int>(limit.count()));
}

}  // namespace velmoor::posix
