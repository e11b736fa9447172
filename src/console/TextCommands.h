// The commands of velmoorctl that turn a project into text and back.
#pragma once

#include "console/CommandContext.h"

namespace velmoor {

[[nodiscard]] Commands TextCommands();

}  // namespace velmoor
