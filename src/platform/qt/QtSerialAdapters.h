// The serial adapters that are plugged in.
#pragma once

#include <vector>

#include "platform/SerialPorts.h"

namespace velmoor::qt {

// Those that tell their maker; built-in ports do not.
[[nodiscard]] std::vector<SerialAdapter> SerialAdapters();

}  // namespace velmoor::qt
