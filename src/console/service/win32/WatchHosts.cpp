#include "console/service/WatchHosts.h"

namespace velmoor {

// Lines are watched by computers that run for years, which this system's adapters are not for yet.
std::unique_ptr<WatchHost> MakeWatchHost(std::ostream& /*out*/, SerialPort& /*port*/) {
  return nullptr;
}

}  // namespace velmoor
