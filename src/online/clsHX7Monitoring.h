// The project's handle on the monitoring window.
#pragma once

#include "platform/Event.h"

namespace velmoor {

class clsHX7Monitoring {
 public:
  // A pass over the ticked items is under way: whoever needs the line, or ends the program, waits.
  // There is no window yet, so there is no pass.
  [[nodiscard]] bool GetMonitoringNotDoneStatus() const { return false; }

  Event<> MonitoringClosed;
};

}  // namespace velmoor
