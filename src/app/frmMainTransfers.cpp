// Moving a whole project to the amplifier and back.

#include "app/frmMain.h"
#include "platform/Events.h"
#include "platform/MessageBoxes.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "project/UploadFlow.h"

namespace velmoor {

namespace {

constexpr const char* kDownloadFailed = "Error downloading data to controller!";

// Runs `work`; an unexpected error shows `failed` and the error's text.
void RunTransfer(const std::string& failed, const std::function<void()>& work) {
  Trapped(failed + "\r", [&work] {
    work();
    return true;
  });
}

}  // namespace

// ---- the frame

bool frmMain::GoOnlineForTransfer(const std::string& failure) {
  blnStopProcedure = false;
  ResultCode result;
  {
    const BusyPointer busy;
    result = clsHelix7->GoOnline(false);
  }
  // The search too writes a parameter.
  clsProject->MarkAfterStrayWrite();
  if (result == kSuccess) {
    if (!blnIsOnline) PostOnline();
    return true;
  }
  ShowExclamation("Cannot go online!  " + failure +
                  "\rHardware is not ready, or communication\r"
                  "process settings are not set correctly.");
  if (blnIsOnline) CommunicationDown();
  return false;
}

void frmMain::BeginProcedure(const std::string& strCaption, int steps) {
  intFinished = 0;
  clsProcedure = std::make_unique<clsHX7Procedure>();
  clsProcedure->Steps = steps;
  clsProcedure->Show_Procedure(strCaption, true);
}

void frmMain::UnloadProcedureDialog() {
  clsProcedure.reset();
  intFinished = 0;
}

// Every row that tells of its progress. The machine is read with the gear ratio and the properties,
// which the editor sends.
int frmMain::StepsOfWholeProject(bool downloading) const {
  const clsHX7MechanicalSystem& machine = clsProject->MechanicalSystem();
  return (downloading ? machine.NumMechSystemPns() : machine.NumPns()) +
         clsProject->Editor().RowsInArray() + clsProject->Position().RowsInArray() +
         clsProject->Jog().RowsInArray() + clsProject->Zone().RowsInArray();
}

// ---- upload

void frmMain::mnuToolsUploadAll_Click() {
  if (!clsProject) return;
  RunTransfer("Upload All failed!", [this] { UploadAll(); });
  UnloadProcedureDialog();
}

void frmMain::UploadAll() {
  if (!GoOnlineForTransfer("Upload failed!")) return;
  if (!AskExclamationYesNo(
          "All existing table data and parameter data will be overwritten with hardware "
          "data\rconverted to units associated to the mechanical system definition!\r"
          "Electronic gear ratio parameters may not match definition!\r"
          "Do you wish to continue?")) {
    return;
  }
  BeginProcedure("Upload All Data", StepsOfWholeProject(false));
  const bool read = RunUploadStages(*clsProject);
  UnloadProcedureDialog();
  if (!read) return;
  ShowUploadedDifferences();
  AskToCommitUpload(*clsProject);
}

// ---- download

bool frmMain::AskRigidity() {
  clsHX7Tuning& tuning = clsProject->Tuning();
  return AskOkCancel("Rigidity setting will be changed to " + std::to_string(tuning.GetRigidity()) +
                     ".\r(Note: Parameters 100, 101, 102, and 401 will be changed based on "
                     "rigidity.)\rDo you wish to change rigidity setting?");
}

void frmMain::mnuToolsDownloadAll_Click() {
  if (!clsProject) return;
  RunTransfer("Download All failed!", [this] {
    if (!GoOnlineForTransfer("Download failed!")) return;
    if (!AskOkCancel("All parameter and table data will be downloaded to the controller.\r"
                     "Do you wish to proceed?")) {
      return;
    }
    clsHX7Tuning& tuning = clsProject->Tuning();
    if (tuning.ChangedRigidity() && !AskRigidity()) tuning.SetChangedRigidity(false);
    BeginProcedure("Download All", StepsOfWholeProject(true));
    const bool ok = clsProject->DownloadAll();
    FinishDownload(ok, {"Download All complete!", "Download All terminated!"});
  });
  UnloadProcedureDialog();
}

void frmMain::mnuToolsDownloadNew_Click() {
  if (!clsProject) return;
  RunTransfer("Download New failed!", [this] {
    if (!GoOnlineForTransfer("Download failed!")) return;
    const std::string dirty = clsProject->WhatIsDirty();
    if (dirty.empty()) {
      ShowExclamation(
          "No new changes have been committed!\r"
          "New items must be changed and committed before download!");
      return;
    }
    if (!AskOkCancel("The following items have been modified:\r" + dirty +
                     "\rNew data will be downloaded to the controller.\r"
                     "Do you wish to proceed?")) {
      return;
    }
    clsHX7Tuning& tuning = clsProject->Tuning();
    const bool asks = dirty.find("Tuning") != std::string::npos && tuning.ChangedRigidity();
    if (asks && !AskRigidity()) tuning.SetChangedRigidity(false);
    BeginProcedure("Download New", clsProject->GetNumberOfNewDownloads());
    const bool ok = clsProject->Download();
    FinishDownload(ok, {"Download New complete!", "Download New terminated!"});
  });
  UnloadProcedureDialog();
}

// The box of the agreement was there.
void frmMain::TuningDownload() {
  if (!clsProject) return;
  RunTransfer("Download Tuning Parameters failed!", [this] {
    if (!GoOnlineForTransfer("Download failed!")) return;
    BeginProcedure("Download Tuning Parameters", clsProject->Tuning().RowsInArray());
    const bool ok = clsProject->DownloadParts({Tool::tuning});
    FinishDownload(
        ok, {"Download Tuning Parameters complete!", "Download Tuning Parameters terminated!"});
  });
  UnloadProcedureDialog();
}

void frmMain::FinishDownload(bool ok, const TransferTexts& texts) {
  UnloadProcedureDialog();
  if (ok) {
    if (blnBaudRateChanged) ChangePCBaudRate();
    blnBaudRateChanged = false;
    ShowInformation(texts.complete);
  } else if (blnStopProcedure) {
    blnStopProcedure = false;
    ShowExclamation(texts.stopped);
  } else {
    lineSuspect_ = true;
    ShowExclamation(kDownloadFailed);
  }
}

}  // namespace velmoor
