// Going online and offline.

#include <utility>

#include "app/frmMain.h"
#include "link/BaudRates.h"
#include "link/DisplayError.h"
#include "platform/Events.h"
#include "platform/Form.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr const char* kCannotTerminate =
    "Error terminating communications with hardware!  Check connections and setup!";
constexpr const char* kCannotModifyRate = "Error modifying communications baud rate!";

}  // namespace

void frmMain::mnuToolsOnline_Click() {
  if (blnIsOnline) {
    ShowExclamation("System is already online!");
    return;
  }
  ResultCode result;
  {
    const BusyPointer busy;
    PreOnline();
    result = clsHelix7->GoOnline(false);
  }
  if (clsProject) clsProject->MarkAfterStrayWrite();
  if (result == kSuccess) {
    PostOnline();
    OfferToSetLineRight(true);
  } else {
    FailedOnline();
  }
}

void frmMain::PreOnline() {
  window_->SetStatusTone(Tone::busy);
  UpdateStatusText("Polling to Go Online...");
  // The search serves no events: without this the text would not be seen.
  YieldEvents();
}

void frmMain::PostOnline() {
  blnIsOnline = true;
  window_->SetPanel(StatusPanel::model, clsHelix7->ServoModel());
  DisplayStatusModuleToolBar(true);
  UpdateStatusText("Online");
  if (!clsHelix7->MotorSize().empty()) strLastMotorSize = clsHelix7->MotorSize();
}

// A search has made the amplifier acknowledge already.
void frmMain::OfferToSetLineRight(bool searched) {
  bool acknowledges = true;
  if (!searched) (void)clsHelix7->AskAcknowledges(acknowledges);
  if (!acknowledges &&
      AskYesNo("The amplifier does not acknowledge what is written to it (Pn802 is 0):\r"
               "every write would be taken for failed.\r\r"
               "Do you wish to switch its acknowledge on?")) {
    const ResultCode result = clsHelix7->MakeItAcknowledge();
    if (result != kSuccess) DisplayError(result, "The acknowledge could not be switched on!");
  }
  if (clsHelix7->Echoes() ||
      !AskYesNo("The amplifier answers without echo (Pn800):\r"
                "a command that was changed on its way cannot be found out, and\r"
                "the terminal and the display of errors stay empty.\r\r"
                "Do you wish to switch its echo on?  It restarts, and its servo goes off.")) {
    return;
  }
  ResultCode result;
  {
    const BusyPointer busy;
    result = clsHelix7->MakeItEcho();
  }
  if (result == kSuccess) return;
  DisplayError(result, "The echo could not be switched on!");
  lineSuspect_ = true;
  LeaveIfLineLost();
}

void frmMain::FailedOnline() {
  blnIsOnline = false;
  DisplayStatusModuleToolBar(false);
  UpdateStatusText("Offline");
  if (AskYesNo("Error autoconnecting with hardware!\r"
               "Do you wish to establish communications manually?")) {
    CommunicationsSettingsOpen();
  } else {
    ShowExclamation("Error communicating with hardware!  Check connections and setup!");
  }
}

void frmMain::mnuToolsOffline_Click() {
  if (!blnIsOnline) {
    ShowExclamation("System is already offline!");
  } else if (clsHelix7->GoOffline()) {
    PostOffline();
  } else {
    ShowExclamation(kCannotTerminate);
  }
}

void frmMain::PostOffline() {
  blnIsOnline = false;
  window_->SetPanel(StatusPanel::model, "");
  DisplayStatusModuleToolBar(false);
  UpdateStatusText("Offline");
}

void frmMain::CommunicationDown() {
  if (clsHelix7->GoOffline()) PostOffline();
}

// A refusal of the amplifier ends a transfer too, and is no reason to leave it.
void frmMain::LeaveIfLineLost() {
  const bool suspect = std::exchange(lineSuspect_, false);
  if (!blnIsOnline) return;
  const bool answers = Comm().IsOpen() && (!suspect || clsHelix7->Answers());
  if (!answers) CommunicationDown();
}

void frmMain::WatchLine() {
  if (!blnIsOnline || inCommand_ || world().forms->InputBlocked()) return;
  std::string reason;
  try {
    (void)Comm().WaitingBytes();
    if (Comm().IsOpen()) return;
    reason = "The serial port was closed.";
  } catch (const SerialPortError& error) {
    reason = error.what();
  }
  TellLineLost(reason);
}

void frmMain::TellLineLost(const std::string& reason) {
  CommunicationDown();
  ShowExclamation("The connection to the hardware was lost!\r" + reason +
                  "\rThe project is unchanged.");
}

void frmMain::StartHelix7() {
  SessionState::StartHelix7();
  connections_ +=
      clsHelix7->ResetStatus.Connect([this](const std::string& type, const std::string& status) {
        clsHelix7_ResetStatus(type, status);
      });
  connections_ += clsHelix7->CommunicationDown.Connect([this] { CommunicationDown(); });
}

void frmMain::clsProject_BaudRateChanged(const std::string& lngValue) {
  blnBaudRateChanged = true;
  lngIndexBaudRate = Int32FromCell(lngValue);
}

void frmMain::ChangePCBaudRate() {
  const std::int32_t rate = GetBaudRate(lngIndexBaudRate);
  if (rate == 0) {
    ShowExclamation(kCannotModifyRate);
    return;
  }
  if (rate == lngBaudRate) return;
  lngBaudRate = rate;
  if (!clsHelix7->GoOffline()) {
    ShowExclamation(kCannotModifyRate);
    return;
  }
  PostOffline();
  const ResultCode result = clsHelix7->GoOnlineAfterRestart();
  if (result == kSuccess) {
    PostOnline();
    ShowInformation("Communications baud rate has been modified.");
  } else {
    DisplayError(result, kCannotModifyRate);
  }
}

void frmMain::CommunicationsSettingsOpen() {
  OpenModalTool(ToolWindow::communicationsSettings,
                "Main.CommunicationsSettingsOpen: ", [this] { frmCommunications(*this).Show(); });
}

}  // namespace velmoor
