// What the tools tell of their transfers, in the status bar and the progress dialog.

#include <map>

#include "app/frmMain.h"
#include "platform/MessageBoxes.h"
#include "project/UploadFlow.h"

namespace velmoor {
void frmMain::ConnectTransfers() {
  Connections& held = projectConnections_;
  held += clsProject->ToolStatus.Connect([this](Tool tool, const std::string& strStatus) {
    UpdateStatusText(std::string(InfoOf(tool).status) + " " + strStatus);
    lineSuspect_ = lineSuspect_ || strStatus.ends_with("Failed");
  });
  held +=
      clsProject->ToolDownloading.Connect([this](Tool tool, std::int16_t row, std::int16_t total) {
        ShowProgress(tool, true, row, total);
      });
  held +=
      clsProject->ToolUploading.Connect([this](Tool tool, std::int16_t row, std::int16_t total) {
        ShowProgress(tool, false, row, total);
      });
  held += clsProject->DownloadComplete.Connect([this] { UpdateStatusText("Download Complete"); });
  held += clsProject->UploadComplete.Connect([this] { UpdateStatusText("Upload Complete"); });
  held += clsProject->MechanicalSystemCheckSumFailed.Connect(
      [this] { clsProject_MechanicalSystemCheckSumFailed(); });
  held += clsProject->MechanicalSystemNoCheckSum.Connect(
      [this] { clsProject_MechanicalSystemNoCheckSum(); });
  held += clsProject->MechanicalSystemZeroSystem.Connect(
      [this] { clsProject_MechanicalSystemZeroSystem(); });
  held += clsProject->ToolUploadRequested.Connect([this](Tool tool) { UploadFromWindow(tool); });
  held +=
      clsProject->ToolDownloadRequested.Connect([this](Tool tool) { DownloadFromWindow(tool); });
  held += clsProject->RigidityChanged.Connect([this] { clsProject_RigidityChanged(); });
}

void frmMain::ShowProgress(Tool tool, bool downloading, std::int16_t iCurrentRow,
                           std::int16_t iTotalRows) {
  const ToolInfo& info = InfoOf(tool);
  const std::string verb = downloading ? "Downloading " : "Uploading ";
  const std::string current = verb + std::string(info.status) + ": " + std::to_string(iCurrentRow) +
                              " of " + std::to_string(iTotalRows) + " " + std::string(info.rows);
  ShowStatusText(current);
  if (!clsProcedure) return;
  clsProcedure->CurrentFinished = iCurrentRow;
  clsProcedure->CurrentSteps = iTotalRows;
  clsProcedure->Current = current;
  ++intFinished;
  clsProcedure->Finished = intFinished;
  clsProcedure->Total = verb + "Item " + std::to_string(intFinished) + " of " +
                        std::to_string(clsProcedure->Steps) + " Total";
}

void frmMain::clsProject_MechanicalSystemCheckSumFailed() {
  UpdateStatusText("Mechanical System Parameters Upload CheckSum Failed");
  ShowInformation(kCheckSumFailedWords);
}

void frmMain::clsProject_MechanicalSystemNoCheckSum() {
  UpdateStatusText("Mechanical System Parameters Upload Failed");
  ShowInformation(kNoCheckSumWords);
}

void frmMain::clsProject_MechanicalSystemZeroSystem() {
  UpdateStatusText("Mechanical System Parameters Upload Failed");
  ShowInformation(kZeroSystemWords);
}

void frmMain::clsProject_RigidityChanged() {
  if (!AskYesNo("Rigidity setting changed successfully.\r"
                "Do you wish to update Gain Tuning parameter values?")) {
    return;
  }
  const bool ownProcedure = clsProcedure == nullptr;
  if (ownProcedure) clsProcedure = std::make_unique<clsHX7Procedure>();
  clsProcedure->Steps = clsProject->Tuning().RowsInArray();
  // The Yes is the agreement to take them into the project.
  if (!clsProject->UploadParts({Tool::tuning})) {
    UpdateStatusText("Tuning Parameters Upload parameters failed");
  } else {
    (void)clsProject->CommitUpload();
  }
  if (ownProcedure) clsProcedure.reset();
}

void frmMain::clsProject_ResolutionDataInvalidated(const std::string& strItems) {
  ShowExclamation(
      "Warning!  Data invalidation occurred while updating project data after resolution "
      "change!\rLimit values have replaced invalid data!\r\rCheck the following data sets: " +
      strItems);
}

}  // namespace velmoor
