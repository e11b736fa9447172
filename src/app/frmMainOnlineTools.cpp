// Opening the tools that work on the live hardware.

#include "app/frmMain.h"
#include "platform/MessageBoxes.h"
#include "platform/Trapped.h"

namespace velmoor {

void frmMain::ConnectOnlineTools() {
  Connections& held = projectConnections_;
  held += clsProject->OnlineStatus.Connect(
      [this](const std::string& status) { UpdateStatusText(status); });
  held += clsProject->LineLost.Connect([this] { TellLineLost("The amplifier does not answer."); });
  held += clsProject->MonitoringClosed.Connect(
      [this] { SetToolOpened(ToolWindow::monitoring, false); });
  SetMonitoringNotDone(
      [this] { return clsProject && clsProject->Monitoring().GetMonitoringNotDoneStatus(); });
}

void frmMain::mnuToolsMonitoring_Click() {
  if (!clsProject) return;
  if (ToolOpened(ToolWindow::monitoring)) {
    clsProject->Monitoring().BringToFront();
    return;
  }
  if (ToolOpened(ToolWindow::terminal)) {
    ShowExclamation("Monitoring can take place only if Terminal Emulator is closed.");
    return;
  }
  const bool shown = Trapped("Main.MonitoringOpen: ",
                             [this] { return clsProject->Monitoring().Show_Monitoring(); });
  SetToolOpened(ToolWindow::monitoring, shown);
}

}  // namespace velmoor
