// The project's parameters as the console program shows them: the rows of the direct parameter
// editor.
#pragma once

#include <vector>

#include "platform/Csv.h"

namespace velmoor {

class clsHX7Project;

// Every parameter of the editor, with the names of the columns in front: pn, description, value,
// unit, minimum, maximum, controller, dirty. Values and limits are in
// the project's units; `controller` and `dirty` are what the working file holds.
[[nodiscard]] std::vector<CsvRow> ParameterRows(clsHX7Project& project);

}  // namespace velmoor
