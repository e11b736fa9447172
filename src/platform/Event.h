// Member events: a tool announces, whoever connected is called, in the order of connection.
//
// Single thread. A connection lives as long as its Connection object; an event that dies first
// leaves its connections harmless. Handlers may connect, disconnect or destroy the event while it
// is raised.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace velmoor {

// Keeps one handler attached. Destroying or resetting it detaches the handler.
class [[nodiscard]] Connection {
 public:
  Connection() = default;
  explicit Connection(std::shared_ptr<bool> alive) : alive_(std::move(alive)) {}
  Connection(Connection&& other) noexcept = default;
  Connection& operator=(Connection&& other) noexcept {
    if (this != &other) {
      Disconnect();
      alive_ = std::move(other.alive_);
    }
    return *this;
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() { Disconnect(); }

  void Disconnect() {
    if (alive_) *alive_ = false;
    alive_.reset();
  }

 private:
  std::shared_ptr<bool> alive_;
};

// The connections of one listener, released together.
class Connections {
 public:
  Connections& operator+=(Connection connection) {
    held_.push_back(std::move(connection));
    return *this;
  }
  void Clear() { held_.clear(); }

 private:
  std::vector<Connection> held_;
};

template <typename... Args>
class Event {
 public:
  using Handler = std::function<void(Args...)>;

  Event() : slots_(std::make_shared<Slots>()) {}
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;
  ~Event() = default;

  Connection Connect(Handler handler) {
    auto alive = std::make_shared<bool>(true);
    slots_->push_back({alive, std::move(handler)});
    return Connection(std::move(alive));
  }

  // Calls every handler that was connected when the call began and is still connected at its turn.
  void Raise(Args... args) const {
    const std::shared_ptr<Slots> slots = slots_;
    std::erase_if(*slots, [](const Slot& slot) { return !*slot.alive; });
    const Slots snapshot = *slots;
    for (const Slot& slot : snapshot) {
      if (*slot.alive) slot.handler(args...);
    }
  }

 private:
  struct Slot {
    std::shared_ptr<bool> alive;
    Handler handler;
  };
  using Slots = std::vector<Slot>;
  std::shared_ptr<Slots> slots_;
};

}  // namespace velmoor
