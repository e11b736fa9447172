// velmoorctl recordings: what was recorded of an axis beside its project.
#pragma once

#include "console/CommandContext.h"

namespace velmoor {

[[nodiscard]] Commands RecordingCommands();

}  // namespace velmoor
