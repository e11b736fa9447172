// Port: one instance a user, and the message with which a second start hands over its command line.
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace velmoor {

// Of the instance that has the lock: it listens to nobody, as at its start and its end; it listens
// and does not answer; it answers.
enum class Running { nobody, silent, answers };

class SingleInstance {
 public:
  virtual ~SingleInstance() = default;

  // Takes the named lock for the life of this process or until Release. False: another process has
  // it.
  virtual bool Claim(const std::string& name) = 0;
  virtual void Release() = 0;

  // On the owner's side: calls `onMessage` with the bytes of each message, from the event loop,
  // after the sender was acknowledged; `isVisible` answers a sender's question; `onActivate` brings
  // the window forward. StopListening undoes it.
  virtual void Listen(std::function<void(std::string)> onMessage, std::function<bool()> isVisible,
                      std::function<void()> onActivate) = 0;
  virtual void StopListening() = 0;

  // On the second start's side.
  virtual Running FindRunning() = 0;
  virtual bool IsRunningVisible() = 0;
  // Waits up to `limit` for the receipt; no retry, the answer is not examined.
  virtual void SendMessage(const std::string& bytes, std::chrono::milliseconds limit) = 0;
  virtual void ActivateRunning() = 0;
};

}  // namespace velmoor
