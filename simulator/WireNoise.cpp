#include "simulator/WireNoise.h"

#include <algorithm>

#include "simulator/NameTable.h"

namespace velmoor {
namespace {

constexpr std::pair<std::string_view, NoiseKind> kNames[] = {
    {"drop-byte", NoiseKind::dropByte},     {"damage-byte", NoiseKind::damageByte},
    {"turn-byte", NoiseKind::turnByte},     {"double-byte", NoiseKind::doubleByte},
    {"delay-byte", NoiseKind::delayByte},   {"cut-line", NoiseKind::cutLine},
    {"repeat-line", NoiseKind::repeatLine},
};

bool IsLineEnd(char c) {
  return c == '\r' || c == '\n';
}

// The line around `at`, without its end.
std::string LineAt(std::string_view bytes, std::size_t at) {
  const std::size_t before = bytes.substr(0, at).find_last_of("\r\n");
  const std::size_t begin = before == std::string_view::npos ? 0 : before + 1;
  const std::size_t end = bytes.find_first_of("\r\n", at);
  return std::string(bytes.substr(begin, end - begin));
}

}  // namespace

std::vector<NoisyPiece> WireNoise::Pass(std::string_view bytes, NoiseDirection direction) {
  std::int64_t& passed = direction == NoiseDirection::toHost ? toHost_ : toAmplifier_;
  passed += static_cast<std::int64_t>(bytes.size());
  if (!planned_ || planned_->direction != direction) return {{std::string(bytes), {}}};
  if (planned_->skip >= static_cast<std::int64_t>(bytes.size())) {
    planned_->skip -= static_cast<std::int64_t>(bytes.size());
    return {{std::string(bytes), {}}};
  }
  const Noise noise = *std::exchange(planned_, std::nullopt);
  const auto at = static_cast<std::size_t>(noise.skip);
  std::string text(bytes);
  switch (noise.kind) {
    case NoiseKind::dropByte:
      text.erase(at, 1);
      break;
    case NoiseKind::damageByte:
      text[at] = kDamagedOnWire;
      break;
    case NoiseKind::turnByte:
      text[at] = static_cast<char>(static_cast<unsigned char>(text[at]) ^ noise.bits);
      break;
    case NoiseKind::doubleByte:
      text.insert(at, 1, text[at]);
      break;
    case NoiseKind::delayByte:
      return {{text.substr(0, at), {}}, {text.substr(at), noise.delay}};
    case NoiseKind::cutLine: {
      std::size_t end = std::min(text.find_first_of("\r\n", at), text.size());
      while (end < text.size() && IsLineEnd(text[end])) ++end;
      text.erase(at, end - at);
      break;
    }
    case NoiseKind::repeatLine:
      text.insert(std::min(text.find_first_of("\r\n", at), text.size()), "\r" + LineAt(bytes, at));
      break;
  }
  return {{std::move(text), {}}};
}

std::optional<NoiseKind> NoiseKindOf(std::string_view name) {
  return ValueNamed(kNames, name);
}

std::string NoiseNames() {
  return NamesOf(kNames);
}

}  // namespace velmoor
