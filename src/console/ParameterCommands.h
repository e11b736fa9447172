// The project's parameters as the console program shows and changes them: through the rows, the
// checks and the words of the direct parameter editor.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/Csv.h"

namespace velmoor {

class clsHX7Project;

// Every parameter of the editor, with the names of the columns in front: pn, description, value,
// unit, minimum, maximum, controller, dirty. Values and limits are in
// the project's units; `controller` and `dirty` are what the working file holds.
[[nodiscard]] std::vector<CsvRow> ParameterRows(clsHX7Project& project);

// Takes assignments of the form "Pn81B=12.5", a list's item by its text, and stores them marked for
// download. All or none: the result is what is wrong with them, line by line, and empty when all
// were taken.
[[nodiscard]] std::vector<std::string> SetParameters(clsHX7Project& project,
                                                     std::span<const std::string> assignments);

}  // namespace velmoor
