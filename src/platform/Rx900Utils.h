// The option card's number formats and the checksum of its machine description.
//
// The amplifier keeps a 32-bit float as 16 decimal digits over two parameters, and the description
// of the machine under a checksum of 16 decimal digits. docs/protocol.md gives both with worked
// examples.
#pragma once

#include <cstdint>
#include <string>

namespace velmoor {

class Rx900Utils {
 public:
  virtual ~Rx900Utils() = default;
  // 16 decimal digits; DecToFloat gives the same float back.
  [[nodiscard]] virtual std::string FloatToDec(float value) const = 0;
  // A text that is not 16 decimal digits of a finite float gives 0.
  [[nodiscard]] virtual float DecToFloat(const std::string& text) const = 0;
  // 16 decimal digits, all "0" for nothing at all (every argument 0) and for nothing else.
  // `selections` is the four-digit text of Pn82E.
  [[nodiscard]] virtual std::string MechSystemChecksum(std::int16_t n1, std::int16_t n2,
                                                       std::int16_t resolution, float measure,
                                                       const std::string& selections) const = 0;
};

// The formats as this system and its simulated amplifier use them.
class StandardRx900Utils final : public Rx900Utils {
 public:
  [[nodiscard]] std::string FloatToDec(float value) const override;
  [[nodiscard]] float DecToFloat(const std::string& text) const override;
  [[nodiscard]] std::string MechSystemChecksum(std::int16_t n1, std::int16_t n2,
                                               std::int16_t resolution, float measure,
                                               const std::string& selections) const override;
};

}  // namespace velmoor
