// A session for itself: nobody else is asked, and nobody asks.
#pragma once

#include "platform/SingleInstance.h"

namespace velmoor::headless {

class OnlyInstance final : public SingleInstance {
 public:
  bool Claim(const std::string& /*name*/) override { return true; }
  void Release() override {}
  void Listen(std::function<void(std::string)> /*onMessage*/, std::function<bool()> /*isVisible*/,
              std::function<void()> /*onActivate*/) override {}
  void StopListening() override {}
  Running FindRunning() override { return Running::nobody; }
  bool IsRunningVisible() override { return false; }
  void SendMessage(const std::string& /*bytes*/, std::chrono::milliseconds /*limit*/) override {}
  void ActivateRunning() override {}
};

}  // namespace velmoor::headless
