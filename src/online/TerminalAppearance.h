// How the terminal's screen looks, and how the settings keep it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace velmoor {

class TerminalScreen;

struct TerminalAppearance {
  std::string NameFont = "fixedsys";
  std::int16_t SizeFont = 10;         // points
  std::string ColorFont = "#E4E7EA";  // "#RRGGBB", like the others
  std::string ColorBold = "#FFB454";  // of what went wrong
  std::string ColorBG = "#1C1F23";

  bool operator==(const TerminalAppearance&) const = default;
};

[[nodiscard]] std::string ColorText(std::uint32_t color);
// 0xRRGGBB; `fallback` for a text that is no colour.
[[nodiscard]] std::uint32_t ColorFromText(std::string_view text, std::string_view fallback);

// What the settings lack, or hold badly, is as it is by default.
[[nodiscard]] TerminalAppearance ReadTerminalAppearance();
// Throws std::runtime_error when they cannot be written.
void WriteTerminalAppearance(const TerminalAppearance& appearance);

void ApplyAppearance(const TerminalAppearance& appearance, TerminalScreen& screen);

}  // namespace velmoor
