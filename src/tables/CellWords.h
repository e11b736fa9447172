// The codes in cells of the index table in words, for tips: "SEL0T250" is "until input SEL0 is set,
// then 250 ms".
#pragma once

#include <string>

#include "session/Project.h"

namespace velmoor {

// What a cell of that column of clsHX7Position means; empty where the text says it itself, and for
// an empty cell or a text that is no code.
[[nodiscard]] std::string CellInWords(const Project& project, int column, const std::string& text);

}  // namespace velmoor
