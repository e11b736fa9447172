// The tools as texts of progress and status name them.
#pragma once

#include <string>

#include "project/clsHX7Project.h"

namespace velmoor {

// "Index Table", "Flexible I/O Parameters".
[[nodiscard]] std::string ToolName(Tool tool);

}  // namespace velmoor
