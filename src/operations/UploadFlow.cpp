#include "operations/UploadFlow.h"

#include <array>

#include "operations/FailureText.h"
#include "platform/MessageBoxes.h"
#include "project/clsHX7Project.h"
#include "session/Session.h"

namespace velmoor {
namespace {

// What the user is told behind a stage that failed, stage by stage; the first asks.
constexpr std::array<const char*, kUploadOrder.size()> kBehindFailure{
    "Do you wish to continue with upload?", "Only Mechanical System Parameters were uploaded!",
    "Only Parameters were uploaded!", "Only Parameters plus Jog Table were uploaded!",
    "Only Parameters plus Jog and Zone Tables were uploaded!"};

bool RunStages(clsHX7Project& project) {
  for (std::size_t stage = 0; stage < kUploadOrder.size(); ++stage) {
    const std::string name(InfoOf(kUploadOrder[stage]).status);
    if (project.UploadPart(kUploadOrder[stage])) continue;
    if (gMainForm->StopProcedure()) {
      gMainForm->SetStopProcedure(false);
      ShowExclamation("Upload " + name + " terminated!");
      return false;
    }
    const std::string words =
        "Could not upload " + name + " from controller!\r" + kBehindFailure[stage];
    if (stage == 0) {
      if (!AskYesNo(FailureText(words))) return false;
    } else {
      ShowExclamation(FailureText(words, "The project is unchanged."));
      return false;
    }
  }
  return true;
}

}  // namespace

bool RunUploadStages(clsHX7Project& project) {
  project.BeginUpload();
  const bool read = RunStages(project);
  if (!read) project.DropUpload();
  return read;
}

bool AskToCommitUpload(clsHX7Project& project) {
  // The words stay the same when the machine's stage failed and the user went on.
  if (AskYesNo("All tables and parameters successfully uploaded from controller.\r"
               "Commit uploaded data to project?")) {
    return project.CommitUpload();
  }
  project.DropUpload();
  return false;
}

}  // namespace velmoor
