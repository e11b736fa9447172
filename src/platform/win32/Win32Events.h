// The waits of a program without windows.
#pragma once

#include "platform/PostedEvents.h"

namespace velmoor::win32 {

class Win32Events final : public PostedEvents {
  void Sleep(std::chrono::milliseconds limit) override;
};

}  // namespace velmoor::win32
