// Setting the hardware back to its factory defaults. The project is not touched: afterwards it and
// the hardware differ until the user uploads or downloads.

#include <span>
#include <string>

#include "app/frmMain.h"
#include "link/CommandWords.h"
#include "link/DisplayError.h"
#include "platform/Events.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"

namespace velmoor {

struct frmMain::ResetStep {
  SimpleCommand command;
  const char* name;  // in the status bar
};

namespace {

bool AskToReset(const std::string& what, const std::string& entries) {
  return AskExclamationYesNo("Caution!  " + what + " will be reset to factory defaults.\r" +
                             entries +
                             " in the device should be uploaded and saved to a file first.\r"
                             "Do you want to revert to factory default now?");
}

}  // namespace

ResultCode frmMain::ResetOnHardware(SimpleCommand command) {
  const BusyPointer busy;
  const ResultCode lngResult = clsHelix7->ResetDefaults(static_cast<std::int32_t>(command));
  lineSuspect_ = lineSuspect_ || lngResult != kSuccess;
  return lngResult;
}

void frmMain::clsHelix7_ResetStatus(const std::string& strResetType, const std::string& strStatus) {
  UpdateStatusText("Reset " + strResetType + " Defaults " + strStatus);
}

// ---- one table

void frmMain::ResetTable(SimpleCommand command, const std::string& table) {
  if (!blnIsOnline || !AskToReset(table + " table", table + " table entries")) return;
  const ResultCode lngResult = ResetOnHardware(command);
  if (lngResult == kSuccess) return;
  DisplayError(lngResult,
               "Error resetting " + LowerCase(table) + " table to factory default values!");
}

void frmMain::mnuToolsResetTableIndex_Click() {
  ResetTable(SimpleCommand::indexInit, "Index");
}
void frmMain::mnuToolsResetTableJog_Click() {
  ResetTable(SimpleCommand::jogInit, "Jog");
}
void frmMain::mnuToolsResetTableZone_Click() {
  ResetTable(SimpleCommand::zoneInit, "Zone");
}

// ---- several in a row

ResultCode frmMain::RunResets(const std::string& strCaption, const std::string& stoppedWords,
                              bool parametersToo) {
  static constexpr ResetStep kSteps[] = {{SimpleCommand::indexInit, "Index Table"},
                                         {SimpleCommand::jogInit, "Jog Table"},
                                         {SimpleCommand::zoneInit, "Zone Table"},
                                         {SimpleCommand::parametersInit, "All Parameters"}};
  const std::span<const ResetStep> steps(kSteps, parametersToo ? 4 : 3);
  blnStopProcedure = false;
  intFinished = 0;
  clsProcedure = std::make_unique<clsHX7Procedure>();
  clsProcedure->Steps = static_cast<int>(steps.size());
  clsProcedure->Show_Procedure(strCaption, false);
  ResultCode lngResult = kSuccess;
  for (const ResetStep& step : steps) {
    lngResult = ResetOnHardware(step.command);
    if (lngResult != kSuccess) break;
    CountReset();
    // The one moment at which the Stop button gets its turn.
    YieldEvents();
    // Also behind the last step, on purpose: what was reset stays reset.
    if (blnStopProcedure) {
      UpdateStatusText("Reset " + std::string(step.name) + " Terminated");
      break;
    }
  }
  const bool stopped = blnStopProcedure && lngResult == kSuccess;
  blnStopProcedure = false;
  UnloadProcedureDialog();
  if (stopped) ShowInformation(stoppedWords);
  return lngResult;
}

void frmMain::CountReset() {
  clsProcedure->CurrentFinished = ++intFinished;
  clsProcedure->Finished = intFinished;
  clsProcedure->Total =
      "Reset " + std::to_string(intFinished) + " of " + std::to_string(clsProcedure->Steps);
}

void frmMain::mnuToolsResetTablesAll_Click() {
  if (!blnIsOnline || !AskToReset("All tables", "Table entries")) return;
  const ResultCode lngResult =
      RunResets("Reset All Tables", "Reset All Table Defaults terminated!", false);
  if (lngResult == kSuccess) return;
  DisplayError(lngResult, "Error resetting tables to factory default values!");
}

// ---- with the servo off

// False: the user refused, or the servo could not be turned off; nothing is reset then.
bool frmMain::TurnServoOffForReset(const std::string& what) {
  if (!AskOkCancel(what + " require servo to be in off state!\r"
                          "If servo is on, servo will be turned off.\rDo you wish to proceed?")) {
    ShowExclamation("Reset to factory defaults aborted!");
    return false;
  }
  const ResultCode lngResult = clsHelix7->DisableServo();
  if (lngResult == kSuccess) return true;
  lineSuspect_ = true;
  DisplayError(lngResult, "Error turning servo off!");
  return false;
}

// Asked after a failed or stopped reset too: the servo was turned off for it.
void frmMain::AskToTurnServoOn() {
  if (!AskExclamationYesNo("Do you wish to turn servo back on?")) return;
  const ResultCode lngResult = clsHelix7->EnableServo();
  if (lngResult == kSuccess) return;
  lineSuspect_ = true;
  DisplayError(lngResult, "Error turning servo back on!");
}

void frmMain::mnuToolsResetParametersAll_Click() {
  if (!blnIsOnline || !AskToReset("All parameters", "Parameters")) return;
  if (!TurnServoOffForReset("Reset to factory default parameters")) return;
  const ResultCode lngResult = ResetOnHardware(SimpleCommand::parametersInit);
  if (lngResult != kSuccess) {
    DisplayError(lngResult, "Error resetting parameters to factory default values!");
  }
  AskToTurnServoOn();
}

void frmMain::mnuToolsResetDefaultsAll_Click() {
  if (!blnIsOnline || !AskToReset("All tables and parameters", "Table and parameter entries")) {
    return;
  }
  if (!TurnServoOffForReset("Reset to all factory defaults")) return;
  const ResultCode lngResult =
      RunResets("Reset All Defaults", "Reset All Defaults terminated!", true);
  AskToTurnServoOn();
  if (lngResult != kSuccess) {
    DisplayError(lngResult, "Error resetting hardware to factory default values!");
  }
}

}  // namespace velmoor
