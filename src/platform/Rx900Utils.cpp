#include "platform/Rx900Utils.h"

#include <bit>
#include <cmath>
#include <limits>

#include "platform/Utility.h"

namespace velmoor {

std::string StandardRx900Utils::FloatToDec(float value) const {
  // The bits of the float as an unsigned decimal number: digits only, since a letter E before a
  // digit in an answer would be taken for a device error.
  return PadToDigits(std::to_string(std::bit_cast<std::uint32_t>(value)), 16);
}

float StandardRx900Utils::DecToFloat(const std::string& text) const {
  if (text.size() != 16 || text.find_first_not_of("0123456789") != std::string::npos) return 0;
  const std::uint64_t bits = std::stoull(text);
  if (bits > std::numeric_limits<std::uint32_t>::max()) return 0;
  const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(bits));
  return std::isfinite(value) ? value : 0;
}

std::string StandardRx900Utils::MechSystemChecksum(std::int16_t n1, std::int16_t n2,
                                                   std::int16_t resolution, float measure,
                                                   const std::string& selections) const {
  // Nothing at all has the checksum of an amplifier that was never given a machine.
  if (n1 == 0 && n2 == 0 && resolution == 0 && measure == 0 && selections == "0000") {
    return std::string(16, '0');
  }
  // FNV-1a, 64 bits, over the five texts joined by "|", reduced to 16 decimal digits and never 0.
  const std::string text = std::to_string(n1) + "|" + std::to_string(n2) + "|" +
                           std::to_string(resolution) + "|" + FloatToDec(measure) + "|" +
                           selections;
  std::uint64_t hash = 14695981039346656037ULL;
  for (const char c : text) {
    hash ^= static_cast<unsigned char>(c);
    hash *= 1099511628211ULL;
  }
  constexpr std::uint64_t kMost = 9999999999999999ULL;  // 16 digits
  return PadToDigits(std::to_string(hash % kMost + 1), 16);
}

}  // namespace velmoor
