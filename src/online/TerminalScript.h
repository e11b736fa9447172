// The text files of the terminal: lines, and nothing else.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmoor {

// The lines of a file, trimmed; empty ones are left out. Throws std::runtime_error where a bound of
// Bounds.h is exceeded.
[[nodiscard]] std::vector<std::string> ScriptLines(std::string_view text);
// Each line on one of its own.
[[nodiscard]] std::string TextOfLines(const std::vector<std::string>& lines);

}  // namespace velmoor
