// Parameters set by assignments such as "Pn81B=12.5", through the rows, the checks and the words of
// the direct parameter editor.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace velmoor {

class clsHX7Project;

// Takes assignments of the form "Pn81B=12.5", a list's item by its text, and stores them marked for
// download. All or none: the result is what is wrong with them, line by line, and empty when all
// were taken.
[[nodiscard]] std::vector<std::string> SetParameters(clsHX7Project& project,
                                                     std::span<const std::string> assignments);

// What to say besides where `value` was refused: for a number with a comma before its decimals that
// a point is meant, else nothing.
[[nodiscard]] std::string DecimalHint(const std::string& value);

}  // namespace velmoor
