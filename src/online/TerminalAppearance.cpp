#include "online/TerminalAppearance.h"

#include <optional>

#include "platform/Controls.h"
#include "platform/Numbers.h"
#include "platform/Settings.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr int kSmallestFont = 4;
constexpr int kLargestFont = 72;
constexpr int kColorDigits = 6;

std::optional<std::uint32_t> ParseColor(std::string_view text) {
  if (text.size() != kColorDigits + 1 || text.front() != '#') return std::nullopt;
  return ParseHex(text.substr(1));
}

}  // namespace

std::string ColorText(std::uint32_t color) {
  return "#" + HexText(color, kColorDigits);
}

std::uint32_t ColorFromText(std::string_view text, std::string_view fallback) {
  const auto color = ParseColor(text);
  return color ? *color : ParseColor(fallback).value_or(0);
}

TerminalAppearance ReadTerminalAppearance() {
  const TerminalAppearance standard;
  const Settings& settings = *world().settings;
  const auto color = [&settings](std::string_view name, const std::string& fallback) {
    return ColorText(ColorFromText(settings.ReadText(name, fallback), fallback));
  };
  TerminalAppearance read;
  read.NameFont = settings.ReadText("TerminalFontName", standard.NameFont);
  const int size = settings.ReadNumber("TerminalFontSize", standard.SizeFont);
  if (size >= kSmallestFont && size <= kLargestFont) read.SizeFont = Narrow<std::int16_t>(size);
  read.ColorFont = color("TerminalFontColor", standard.ColorFont);
  read.ColorBold = color("TerminalBoldColor", standard.ColorBold);
  read.ColorBG = color("TerminalBGColor", standard.ColorBG);
  return read;
}

void WriteTerminalAppearance(const TerminalAppearance& appearance) {
  Settings& settings = *world().settings;
  settings.Write("TerminalFontName", appearance.NameFont);
  settings.Write("TerminalFontSize", NumberText(appearance.SizeFont));
  settings.Write("TerminalFontColor", appearance.ColorFont);
  settings.Write("TerminalBoldColor", appearance.ColorBold);
  settings.Write("TerminalBGColor", appearance.ColorBG);
}

void ApplyAppearance(const TerminalAppearance& appearance, TerminalScreen& screen) {
  const TerminalAppearance standard;
  screen.SetFont(appearance.NameFont, appearance.SizeFont);
  screen.SetColors(ColorFromText(appearance.ColorFont, standard.ColorFont),
                   ColorFromText(appearance.ColorBold, standard.ColorBold),
                   ColorFromText(appearance.ColorBG, standard.ColorBG));
}

}  // namespace velmoor
