// The event pump of a program without windows: posted work and nothing else.
#pragma once

#include <deque>
#include <functional>

#include "platform/Events.h"

namespace velmoor::win32 {

class Win32Events final : public EventPump {
 public:
  void Yield() override { ServePosted(); }
  void WaitForEvents(std::chrono::milliseconds limit) override;
  void Post(std::function<void()> work) override { posted_.push_back(std::move(work)); }
  void SetBusyPointer(bool) override {}

 private:
  bool ServePosted();
  std::deque<std::function<void()>> posted_;
};

}  // namespace velmoor::win32
