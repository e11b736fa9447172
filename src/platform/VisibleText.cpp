#include "platform/VisibleText.h"

#include <algorithm>
#include <cstdint>

namespace velmoor {
namespace {

bool Continues(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// The bytes of the character at the front of `text`; 0: they are no UTF-8.
std::size_t CharacterLength(std::string_view text, std::uint32_t& code) {
  const auto first = static_cast<unsigned char>(text.front());
  code = first;
  if (first < 0x80) return 1;
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC2 ? 2 : 0;
  if (length == 0 || first > 0xF4 || text.size() < length) return 0;
  code = first & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if (!Continues(text[i])) return 0;
    code = (code << 6U) | (static_cast<unsigned char>(text[i]) & 0x3FU);
  }
  const bool longer = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
  const bool half = code >= 0xD800 && code < 0xE000;
  return longer || half || code > 0x10FFFF ? 0 : length;
}

bool Steers(std::uint32_t code) {
  const bool control = code < 0x20 || (code >= 0x7F && code < 0xA0);
  const bool direction = code == 0x061C || code == 0x200E || code == 0x200F ||
                         (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
  const bool lineEnd = code == 0x2028 || code == 0x2029;
  return control || direction || lineEnd;
}

void AppendHex(std::string& text, const char* lead, std::uint32_t code, int digits) {
  text += lead;
  for (int at = digits - 1; at >= 0; --at) text += "0123456789abcdef"[(code >> (4 * at)) & 15U];
}

std::string Visible(std::string_view text, bool keepsLines) {
  std::string visible;
  visible.reserve(text.size());
  while (!text.empty()) {
    const TextCharacter character = FirstCharacter(text);
    const std::uint32_t code = character.code;
    std::size_t length = character.bytes;
    if (code == '\r' || code == '\n') {
      if (keepsLines && text.starts_with("\r\n")) length = 2;
      visible += keepsLines ? '\n' : ' ';
    } else if (keepsLines && code == '\t') {
      visible += '\t';
    } else if (length == 0) {
      AppendHex(visible, "\\x", static_cast<unsigned char>(text.front()), 2);
    } else if (character.steers) {
      AppendHex(visible, code < 0x100 ? "\\x" : "\\u", code, code < 0x100 ? 2 : 4);
    } else {
      visible += text.substr(0, length);
    }
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return visible;
}

}  // namespace

TextCharacter FirstCharacter(std::string_view text) {
  TextCharacter character;
  character.bytes = CharacterLength(text, character.code);
  character.steers = character.bytes > 0 && Steers(character.code);
  return character;
}

std::string VisibleText(std::string_view text) {
  return Visible(text, false);
}

std::string VisibleLines(std::string_view text) {
  return Visible(text, true);
}

std::string Shortened(std::string_view text, std::size_t most) {
  if (text.size() <= most) return std::string(text);
  while (most > 0 && Continues(text[most])) --most;
  return std::string(text.substr(0, most)) + "...";
}

}  // namespace velmoor
