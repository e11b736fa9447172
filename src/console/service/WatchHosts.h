// The host of watches that this system has.
#pragma once

#include <memory>
#include <ostream>

#include "plant/WatchHost.h"
#include "platform/SerialPort.h"

namespace velmoor {

// For a port of this system; both must outlive the result. Null: this system has none.
[[nodiscard]] std::unique_ptr<WatchHost> MakeWatchHost(std::ostream& out, SerialPort& port);

}  // namespace velmoor
