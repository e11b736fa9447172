// The event pump of a program without windows: posted work and nothing else. Each system sleeps in
// its own way.
#pragma once

#include <deque>
#include <functional>

#include "platform/Events.h"

namespace velmoor {

class PostedEvents : public EventPump {
 public:
  void Yield() final { ServePosted(); }
  void WaitForEvents(std::chrono::milliseconds limit) final;
  void Post(std::function<void()> work) final { posted_.push_back(std::move(work)); }
  void SetBusyPointer(bool) final {}

 private:
  virtual void Sleep(std::chrono::milliseconds limit) = 0;
  bool ServePosted();

  std::deque<std::function<void()>> posted_;
};

}  // namespace velmoor
