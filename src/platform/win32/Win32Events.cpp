#include "platform/win32/Win32Events.h"

#include <thread>

namespace velmoor::win32 {

void Win32Events::Sleep(std::chrono::milliseconds limit) {
  std::this_thread::sleep_for(limit);
}

}  // namespace velmoor::win32
