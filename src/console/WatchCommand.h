// `velmoorctl line FILE watch`: a process of one line that runs for months.
#pragma once

#include "console/CommandContext.h"

namespace velmoor {

// Runs until the program is to end. False: the watch could not be begun; the user was told.
[[nodiscard]] bool Watch(const Context& context);

}  // namespace velmoor
