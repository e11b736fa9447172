// Opening the tools that work on the live hardware.

#include "app/frmMain.h"
#include "instruments/AlarmRecordings.h"
#include "link/DisplayError.h"
#include "link/clsHX7Helix7.h"
#include "online/frmAlarms.h"
#include "online/frmHomePosition.h"
#include "online/frmProductInfo.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"

namespace velmoor {

void frmMain::ConnectOnlineTools() {
  Connections& held = projectConnections_;
  held += clsProject->MonitoringClosed.Connect(
      [this] { SetToolOpened(ToolWindow::monitoring, false); });
  held +=
      clsProject->TerminalClosed.Connect([this] { SetToolOpened(ToolWindow::terminal, false); });
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
  OpenTool(ToolWindow::monitoring, "Main.MonitoringOpen: ", [this] {
    clsHX7Monitoring& monitoring = clsProject->Monitoring();
    if (!clsProject->IsAsNew(Tool::mechanicalSystem)) monitoring.PreferMachineUnits();
    return monitoring.Show_Monitoring();
  });
}

// The warning informs and does not ask: there is no way back from it, deliberately.
void frmMain::mnuToolsTerminal_Click() {
  if (!clsProject) return;
  if (ToolOpened(ToolWindow::terminal)) {
    clsProject->Terminal().BringToFront();
    return;
  }
  if (ToolOpened(ToolWindow::monitoring)) {
    ShowExclamation("Terminal Emulator can only be used when Monitoring is closed.");
    return;
  }
  ShowInformation(
      "Warning!  Careless usage of Terminal Emulator may\r"
      "result in bodily harm and/or machinery damage!");
  OpenTool(ToolWindow::terminal,
           "Main.TerminalOpen: ", [this] { return clsProject->Terminal().Show_Terminal(); });
}

// ---- test run

ResultCode frmMain::IsServoAlwaysOn(bool& bIsAlwaysOn) {
  std::string sParmVal;
  const ResultCode result = clsHelix7->GetParameter("80B", sParmVal);
  // A text that is no number bars nothing, deliberately.
  bIsAlwaysOn = result == kSuccess && ParseFloat(Trim(sParmVal)) == 2.0;
  return result;
}

bool frmMain::MayMoveByHand(const std::string& cannot) {
  bool bIsAlwaysOn = false;
  const ResultCode result = IsServoAlwaysOn(bIsAlwaysOn);
  if (result != kSuccess) {
    DisplayError(result, "Cannot determine if servo is 'Always On'!  " + cannot + "!");
    return false;
  }
  if (bIsAlwaysOn) {
    ShowExclamation(cannot + " while servo is set to 'Always Servo On' at Pn80B!");
    return false;
  }
  return operations_.connection.Motor().MayGoOn();
}

void frmMain::mnuToolsServoJog_Click() {
  if (!clsProject) return;
  Trapped("frmMain.mnuToolsServoJog_Click: ", [this] {
    if (!ToolOpened(ToolWindow::servoJog) && MayMoveByHand("Cannot perform Test Run")) {
      ServoJogOpenModal();
    }
    return true;
  });
}

void frmMain::ServoJogOpenModal() {
  OpenModalTool(ToolWindow::servoJog,
                "Main.ServoJogOpenModal: ", [this] { clsProject->ServoJog().Show_ServoJog(); });
  if (clsProject->ServoJog().NeedsSaving()) clsProject->SetNeedsSaving(true);
}

void frmMain::MakeSafe() {
  if (clsProject) clsProject->ServoJog().MakeSafe();
  tryIt_.MakeSafe();
}

// ---- small tools

void frmMain::mnuToolsInertiaRatio_Click() {
  if (clsProject && !ToolOpened(ToolWindow::inertiaRatio)) InertiaRatioOpenModal();
}

void frmMain::InertiaRatioOpenModal() {
  OpenModalTool(ToolWindow::inertiaRatio, "Main.InertiaRatioOpenModal: ", [this] {
    clsProject->InertiaRatio().Show_InertiaRatio();
  });
}

void frmMain::mnuToolsHomePosition_Click() {
  if (clsProject && !ToolOpened(ToolWindow::homePosition)) HomePositionOpenModal();
}

void frmMain::HomePositionOpenModal() {
  OpenModalTool(ToolWindow::homePosition, "Main.HomePositionOpenModal: ", [this] {
    frmHomePosition window(clsProject->HomingService());
    const Connection status =
        window.Status.Connect([this](const std::string& text) { UpdateStatusText(text); });
    window.Show(FormMode::modal);
    if (window.NeedsSaving()) clsProject->SetNeedsSaving(true);
  });
}

bool frmMain::MayAskAmplifier(const std::string& what) {
  if (!ToolOpened(ToolWindow::monitoring) && !ToolOpened(ToolWindow::terminal)) return true;
  ShowExclamation(what +
                  " can only be viewed when\r"
                  "Monitoring and Terminal Emulator are closed.");
  return false;
}

// Without a project too: an alarm is looked at before anything else.
void frmMain::mnuToolsAlarms_Click() {
  if (!MayAskAmplifier("Alarms")) return;
  if (!operations_.connection.GoOnlineFor("The alarms cannot be read!")) return;
  std::string wanted;
  OpenModalTool(ToolWindow::alarms, "Main.AlarmsOpenModal: ", [this, &wanted] {
    const auto folder = instruments_.Folder();
    frmAlarms window(folder ? AlarmRecordings(*folder) : std::vector<std::string>());
    window.Show(FormMode::modal);
    wanted = window.Wanted();
  });
  if (!wanted.empty()) recordings_.Open(wanted);
}

void frmMain::mnuToolsProductInformation_Click() {
  if (!MayAskAmplifier("Product Information")) return;
  if (!ToolOpened(ToolWindow::productInfo)) ProductInfoOpenModal();
}

void frmMain::ProductInfoOpenModal() {
  OpenModalTool(ToolWindow::productInfo, "Main.ProductInfoOpenModal: ", [] {
    frmProductInfo window;
    window.Show(FormMode::modal);
  });
}

}  // namespace velmoor
