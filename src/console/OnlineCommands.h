// The commands of velmoorctl that watch the live amplifier, or talk to it line by line.
#pragma once

#include "console/CommandContext.h"

namespace velmoor {

[[nodiscard]] Commands OnlineCommands();

}  // namespace velmoor
