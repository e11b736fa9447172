// The words that the terminal knows, with what they mean: for its completion and its list.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmoor {

struct TerminalWord {
  std::string_view word;
  std::string_view meaning;
  bool own = false;  // the terminal's own, without an axis in front; else the amplifier's
};

// By subject.
[[nodiscard]] std::span<const TerminalWord> TerminalWords();

// The line begins with one of the amplifier's words: what it lacks is the axis in front.
[[nodiscard]] bool LacksAxis(std::string_view line);

// What a line that is being typed can go on as: the words that begin with what is there, behind the
// axis where it begins with that.
struct Completion {
  std::string line;  // as far as all of them agree
  std::vector<TerminalWord> words;
};
[[nodiscard]] Completion Complete(const std::string& line, const std::string& axis);

}  // namespace velmoor
