// The command of velmoorctl that works on all axes of a line file, one after the other.
#pragma once

#include "console/CommandContext.h"

namespace velmoor {

[[nodiscard]] Commands LineCommands();

}  // namespace velmoor
