// The command of velmoorctl that runs a project's programme on a simulated axis.
#pragma once

#include "console/CommandContext.h"

namespace velmoor {

[[nodiscard]] Commands RehearseCommands();

}  // namespace velmoor
