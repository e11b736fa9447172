// A serial line with amplifiers on it: bytes in, bytes out, each with its time.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/FaultPlan.h"
#include "simulator/SimulatedAmplifier.h"
#include "simulator/WireNoise.h"

namespace velmoor {

// A stretch of bytes that the line sends, to be begun at `start` or when the line is free.
struct Transmission {
  Micros start{0};
  std::int32_t baudRate = 0;
  std::string bytes;
  bool hangsUp = false;  // the line vanishes instead
};

// The time that `count` characters take: start bit, seven data bits, parity, two stop bits.
[[nodiscard]] Micros WireTime(std::size_t count, std::int32_t baudRate);

class SimulatedLine {
 public:
  // The axis must be free. The amplifier lives as long as the line.
  SimulatedAmplifier& AddAmplifier(AmplifierSettings settings = {});
  // Null where no amplifier has that axis.
  [[nodiscard]] SimulatedAmplifier* Amplifier(char axis);
  [[nodiscard]] std::deque<SimulatedAmplifier>& Amplifiers() { return amplifiers_; }
  [[nodiscard]] const std::deque<SimulatedAmplifier>& Amplifiers() const { return amplifiers_; }

  // Takes bytes of the host, complete at `now`, sent at `hostBaudRate`. A line ends at CR; LF means
  // nothing. An amplifier of another speed hears nothing, none answers to a foreign axis, and none
  // takes a line with a character of wrong parity.
  std::vector<Transmission> Receive(std::string_view bytes, Micros now, std::int32_t hostBaudRate);
  // Forgets a line that has begun.
  void DropInput() { input_.clear(); }

  FaultPlan faults;
  WireNoise noise;

 private:
  void Take(std::string_view bytes, Micros now, std::int32_t hostBaudRate,
            std::vector<Transmission>& sent);
  void Serve(std::string_view line, Micros now, std::int32_t hostBaudRate,
             std::vector<Transmission>& sent);

  std::deque<SimulatedAmplifier> amplifiers_;
  std::string input_;
};

}  // namespace velmoor
