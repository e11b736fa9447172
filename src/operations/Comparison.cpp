#include "operations/Comparison.h"

#include "operations/FailureText.h"
#include "platform/MessageBoxes.h"

namespace velmoor {

bool Comparison::ReadEverything() {
  clsHX7Project& project = *session_.OwnProject();
  project.BeginUpload();
  for (const Tool part : kUploadOrder) {
    if (project.UploadPart(part)) continue;
    if (session_.StopProcedure()) {
      ShowExclamation("Comparison terminated!");
      return false;
    }
    // No exchange failed: the amplifier told a machine that cannot be used.
    const bool unusable = session_.Helix7()->LatestFailure().code == kSuccess;
    if (part == Tool::mechanicalSystem && unusable) continue;
    connection_.Suspect();
    ShowExclamation(FailureText("Comparison failed!\r" + std::string(InfoOf(part).status) +
                                " could not be read from the controller."));
    return false;
  }
  return true;
}

std::optional<std::vector<PartComparison>> Comparison::Run() {
  if (!connection_.GoOnlineFor("Comparison failed!")) return std::nullopt;
  connection_.Motor().Tell();
  clsHX7Project& project = *session_.OwnProject();
  Operation run(desk_, "Compare with Hardware");
  int steps = 0;
  for (const Tool part : kUploadOrder) steps += project.RowsOf(part);
  run.Begin(steps, true);
  Connections rows;
  rows += project.ToolUploading.Connect([&run](Tool tool, std::int16_t row, std::int16_t total) {
    run.CountRow(tool, false, row, total);
  });
  std::optional<std::vector<PartComparison>> parts;
  if (ReadEverything()) parts = project.CompareWithUpload();
  // What was read serves the comparison alone.
  project.DropUpload();
  session_.SetStopProcedure(false);
  run.End(!parts ? "not done" : Differs(*parts) ? "different" : "equal");
  return parts;
}

}  // namespace velmoor
