// Texts from outside as they are shown: nothing in them steers a terminal, a window or a
// spreadsheet.
//
// Line breaks, tabs, escape sequences, the controls of 8-bit terminals and the marks that turn the
// direction of writing are written out ("\x1b", "\u202e"), and so are bytes that are no UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace velmoor {

// The character at the front of a text that is not empty.
struct TextCharacter {
  std::size_t bytes = 0;  // 0: the first byte is no UTF-8
  std::uint32_t code = 0;
  bool steers = false;  // it is one of those that are written out
};
[[nodiscard]] TextCharacter FirstCharacter(std::string_view text);

// `text` on one line: a line break becomes a blank.
[[nodiscard]] std::string VisibleText(std::string_view text);
// `text` with its lines ("\r", "\n" or both) ended by "\n", and its tabs.
[[nodiscard]] std::string VisibleLines(std::string_view text);
// At most `most` bytes of the text, cut between two characters, and "..." where something is cut.
[[nodiscard]] std::string Shortened(std::string_view text, std::size_t most);

}  // namespace velmoor
