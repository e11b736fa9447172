// velmoorctl set: the machine, or parameters, by assignments.
#pragma once

#include <span>
#include <string>

#include "console/CommandContext.h"

namespace velmoor {

// Throws UsageError where the words are no assignments that one command can take.
void CheckAssignments(std::span<const std::string> words);
// Puts them into the project, all or none, unsaved. False: refused, and told.
[[nodiscard]] bool TakeAssignments(const Context& context, clsHX7Project& project,
                                   std::span<const std::string> words);

[[nodiscard]] Commands SetCommands();

}  // namespace velmoor
