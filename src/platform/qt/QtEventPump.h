// The event loop of the desktop.
#pragma once

#include <memory>

#include "platform/Events.h"

namespace velmoor::qt {

class QtEventPump final : public EventPump {
 public:
  void Yield() override;
  void WaitForEvents(std::chrono::milliseconds limit) override;
  void Post(std::function<void()> work) override;
  void SetBusyPointer(bool busy) override;
};

// Calls `onReadable` from the event loop whenever the descriptor has something to read, for as long
// as the result lives.
[[nodiscard]] std::shared_ptr<void> WatchDescriptor(int descriptor,
                                                    std::function<void()> onReadable);

}  // namespace velmoor::qt
