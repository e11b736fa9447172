// velmoorctl history and restore: what was moved between a project and its amplifiers.
#pragma once

#include "console/CommandContext.h"

namespace velmoor {

[[nodiscard]] Commands HistoryCommands();

}  // namespace velmoor
