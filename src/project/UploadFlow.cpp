#include "project/UploadFlow.h"

#include <array>

#include "platform/MessageBoxes.h"
#include "project/clsHX7Project.h"
#include "session/Session.h"

namespace velmoor {
namespace {

struct Stage {
  Tool tool;
  const char* onFailure;
  const char* whenStopped;
  bool mayGoOn;  // the failure is a question whose Yes goes on
};

const std::array<Stage, 5>& Stages() {
  static const std::array<Stage, 5> kStages{{
      {Tool::mechanicalSystem,
       "Could not upload Mechanical System Parameters from controller!\r"
       "Do you wish to continue with upload?",
       "Upload Mechanical System Parameters terminated!", true},
      {Tool::editor,
       "Could not upload Hardware Parameters from controller!\r"
       "Only Mechanical System Parameters were uploaded!",
       "Upload Hardware Parameters terminated!", false},
      {Tool::jog, "Could not upload Jog Table from controller!\rOnly Parameters were uploaded!",
       "Upload Jog Table terminated!", false},
      {Tool::zone,
       "Could not upload Zone Table from controller!\r"
       "Only Parameters plus Jog Table were uploaded!",
       "Upload Zone Table terminated!", false},
      {Tool::position,
       "Could not upload Index Table from controller!\r"
       "Only Parameters plus Jog and Zone Tables were uploaded!",
       "Upload Index Table terminated!", false},
  }};
  return kStages;
}

}  // namespace

bool RunUploadStages(clsHX7Project& project) {
  project.TakeSnapshot();
  for (const Stage& stage : Stages()) {
    if (project.UploadPart(stage.tool)) continue;
    if (gMainForm->StopProcedure()) {
      gMainForm->SetStopProcedure(false);
      ShowExclamation(stage.whenStopped);
      return false;
    }
    if (stage.mayGoOn) {
      if (!AskYesNo(stage.onFailure)) return false;
    } else {
      ShowExclamation(stage.onFailure);
      return false;
    }
  }
  return true;
}

void AskToCommitUpload(clsHX7Project& project) {
  // The words stay the same when the machine's stage failed and the user went on.
  if (AskYesNo("All tables and parameters successfully uploaded from controller.\r"
               "Commit uploaded data to project?")) {
    project.CommitUploadedData();
  } else {
    project.RestoreSnapshot();
  }
}

}  // namespace velmoor
