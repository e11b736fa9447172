// Port: where messages for others go, a broker or a file.
//
// Nothing that comes back changes anything here: a publisher takes messages, and tells which of
// them have arrived.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace velmoor {

struct Publication {
  std::string topic;
  std::string text;
  bool retained = false;  // whoever comes later gets the latest one of the topic
};

class Publisher {
 public:
  virtual ~Publisher() = default;

  // Takes a message over. False: not now; ask again later.
  [[nodiscard]] virtual bool Hand(const Publication& message) = 0;

  struct Progress {
    std::size_t delivered = 0;  // further ones, in the order in which they were handed over
    bool lost = false;       // nobody knows of the others: hand them over again, the oldest first
    bool connected = false;  // anew
  };
  // What became of them since it was last asked. Never waits.
  [[nodiscard]] virtual Progress Take() = 0;
  // Why nothing is delivered, in words; empty: connected.
  [[nodiscard]] virtual std::string Trouble() const = 0;
  // The last message, where one can still be delivered in that time; then nothing is taken any
  // more.
  virtual void End(const Publication& last, std::chrono::milliseconds limit) = 0;
};

}  // namespace velmoor
