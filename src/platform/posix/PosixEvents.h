// The waits of a program without windows; a signal ends one early.
#pragma once

#include "platform/PostedEvents.h"

namespace velmoor::posix {

class PosixEvents final : public PostedEvents {
  void Sleep(std::chrono::milliseconds limit) override;
};

}  // namespace velmoor::posix
