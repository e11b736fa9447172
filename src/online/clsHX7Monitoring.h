// The project's handle on the monitoring window.
#pragma once

#include "online/frmMonitoring.h"
#include "platform/Event.h"

namespace velmoor {

class clsHX7Monitoring {
 public:
  clsHX7Monitoring();

  bool Show_Monitoring() { return frm_.Show(FormMode::modeless); }
  // Before it is shown: the machine's units come first, unless the user has chosen others.
  void PreferMachineUnits() { frm_.PreferMachineUnits(); }
  void BringToFront() { frm_.BringToFront(); }
  void Unload_Monitoring() { frm_.Unload(); }
  // A pass over the ticked items is under way: whoever needs the line, or ends the program, waits.
  [[nodiscard]] bool GetMonitoringNotDoneStatus() const { return frm_.NotDone(); }

  Event<> MonitoringClosed;
  Event<const std::string&> MonitoringStatus;  // "Monitoring Stand By"
  Event<> CommunicationDown;                   // the amplifier does not answer any more

 private:
  frmMonitoring frm_;
  Connections connections_;
};

}  // namespace velmoor
