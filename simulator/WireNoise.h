// What a bad cable does: one byte, or the rest of one line, goes wrong on its way.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmoor {

enum class NoiseKind : std::uint8_t {
  dropByte,
  damageByte,  // its parity is wrong, which the far end notices
  turnByte,    // two of its bits are turned: parity does not notice
  doubleByte,
  delayByte,  // it and all behind it come later
  cutLine,    // the rest of its line is lost, the line end too
  repeatLine  // its line comes twice
};

enum class NoiseDirection : std::uint8_t { toAmplifier, toHost };

struct Noise {
  NoiseKind kind = NoiseKind::dropByte;
  NoiseDirection direction = NoiseDirection::toHost;
  std::int64_t skip = 0;  // bytes of that direction that pass unharmed first
  std::chrono::milliseconds delay{100};
  unsigned bits = 0b11;  // that turnByte turns
};

// How a character of wrong parity arrives: as it does in the systems that check it.
inline constexpr char kDamagedOnWire = '\0';

// What becomes of a stretch of bytes: its pieces, each with the time that it comes late.
struct NoisyPiece {
  std::string bytes;
  std::chrono::milliseconds late{0};
};

class WireNoise {
 public:
  // One at a time: the new one replaces the one before.
  void Plan(const Noise& noise) { planned_ = noise; }
  void Clear() { planned_.reset(); }
  // The planned one has not happened yet.
  [[nodiscard]] bool IsPlanned() const { return planned_.has_value(); }

  // Passes bytes on; `bytes` ends behind a line or is a whole transmission.
  [[nodiscard]] std::vector<NoisyPiece> Pass(std::string_view bytes, NoiseDirection direction);

 private:
  std::optional<Noise> planned_;
  std::int64_t toHost_ = 0;
  std::int64_t toAmplifier_ = 0;
};

// The names of the kinds as they are typed, such as "drop-byte".
[[nodiscard]] std::optional<NoiseKind> NoiseKindOf(std::string_view name);
// All names, joined by blanks.
[[nodiscard]] std::string NoiseNames();

}  // namespace velmoor
