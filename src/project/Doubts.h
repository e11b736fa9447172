// The values of a project that nobody has answered for, in the user's words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "project/data/Doubt.h"

namespace velmoor {

// "differs", "outside", "unknown": on the command line.
[[nodiscard]] std::string_view WordOf(Doubt::Kind kind);
// "Index Table step 3, Speed: shows 120.000, and 300000 would go out (5000.000)".
[[nodiscard]] std::string InWords(const Doubt& doubt);
// The first ones, a line each, and how many more there are.
[[nodiscard]] std::string InWords(const std::vector<Doubt>& doubts);

}  // namespace velmoor
