// The command of velmoorctl that makes a project's report.
#pragma once

#include <string>

#include "console/CommandContext.h"

namespace velmoor {

// Writes the open project, in the sections and on the paper of the options. False: told.
[[nodiscard]] bool WriteReport(const Context& context, clsHX7Project& project,
                               const std::string& path);

[[nodiscard]] Commands ReportCommands();

}  // namespace velmoor
