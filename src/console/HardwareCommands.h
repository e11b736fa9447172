// The commands of velmoorctl that move a project to the amplifier and back, or compare it.
#pragma once

#include "console/CommandContext.h"

namespace velmoor {

[[nodiscard]] Commands HardwareCommands();

}  // namespace velmoor
