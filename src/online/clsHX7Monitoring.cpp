#include "online/clsHX7Monitoring.h"

namespace velmoor {

clsHX7Monitoring::clsHX7Monitoring() {
  connections_ += frm_.Closed.Connect([this] { MonitoringClosed.Raise(); });
  connections_ +=
      frm_.Status.Connect([this](const std::string& status) { MonitoringStatus.Raise(status); });
  connections_ += frm_.CommunicationDown.Connect([this] { CommunicationDown.Raise(); });
}

}  // namespace velmoor
