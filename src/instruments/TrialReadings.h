// What is read of the axis while gains are tried: position, speed, following error and torque in
// turn, the alarm now and then. Each call asks one question, so that a released button never waits
// for more than one exchange.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "link/ResultCode.h"

namespace velmoor {

class TrialReadings {
 public:
  // `withStatus`: the status flags too.
  ResultCode AskNext(bool withStatus);
  // A silent line: nothing is known any more.
  void Forget() { position_ = status_ = std::nullopt; }

  [[nodiscard]] const std::optional<std::int32_t>& Position() const { return position_; }
  [[nodiscard]] const std::optional<std::int32_t>& Status() const { return status_; }
  // An alarm has taken the servo off; a warning has not.
  [[nodiscard]] bool HasTripped() const { return tripped_; }

 private:
  ResultCode Ask(std::size_t place, bool withStatus);

  std::optional<std::int32_t> position_, status_;  // reference units, bits
  bool tripped_ = false;
  std::size_t turn_ = 0;
};

}  // namespace velmoor
