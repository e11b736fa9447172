// What the program that runs a watch does for it.
#pragma once

#include <memory>
#include <string>

#include "operations/WatchSettings.h"
#include "platform/Publisher.h"

namespace velmoor {

class WatchHost {
 public:
  virtual ~WatchHost() = default;

  // Before each beginning, with what the line file says. Throws std::runtime_error.
  virtual void Begin(const std::string& device, const WatchSettings& settings) = 0;
  [[nodiscard]] virtual bool Ends() = 0;     // the program is to come to its end
  [[nodiscard]] virtual bool Rereads() = 0;  // the line file is to be read again
  // Somebody else wants the port, or has it.
  [[nodiscard]] virtual bool IsPortWanted() = 0;
  virtual void PortIsFree() = 0;

  // For the log of the system: one line.
  virtual void Tell(const std::string& words) = 0;
  // Every few seconds, with how it goes.
  virtual void Alive(const std::string& words) = 0;
  // For who asks for the figures.
  virtual void ShowMetrics(const std::string& text) = 0;
  // Where messages go; null: nowhere. Throws std::runtime_error for settings that cannot be used.
  [[nodiscard]] virtual std::unique_ptr<Publisher> Publish(const WatchSettings& settings,
                                                           const Publication& birth,
                                                           const Publication& will) = 0;
};

}  // namespace velmoor
