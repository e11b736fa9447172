// The command of velmoorctl that makes a project's report.
#pragma once

#include "console/CommandContext.h"

namespace velmoor {

[[nodiscard]] Commands ReportCommands();

}  // namespace velmoor
