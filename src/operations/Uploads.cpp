#include "operations/Uploads.h"

#include <algorithm>

#include "link/clsHX7Helix7.h"
#include "operations/FailureText.h"
#include "operations/TransferTime.h"
#include "operations/UploadFlow.h"
#include "platform/Log.h"
#include "platform/MessageBoxes.h"
#include "platform/Trapped.h"
#include "project/ProjectCompare.h"

namespace velmoor {
namespace {

constexpr const char* kUnchanged = "The project is unchanged.";

}  // namespace

const std::vector<Tool>& Everything() {
  static const std::vector<Tool> kEverything(kUploadOrder.begin(), kUploadOrder.end());
  return kEverything;
}

void Uploads::FollowProject() {
  project_.Clear();
  project_ += project().ToolUploading.Connect(rows_.Listener(false));
}

int Uploads::StepsOf(const std::vector<Tool>& tools) {
  int steps = 0;
  for (const Tool tool : tools) steps += project().RowsOf(tool);
  return steps;
}

bool Uploads::Ask(const std::string& question, const std::vector<Tool>& parts) {
  int values = 0;
  for (const Tool part : parts) values += project().ValuesOf(part, true);
  return AskExclamationYesNo(question + "\r\r" +
                             TransferCost(values, Way::read, session_.BaudRate()));
}

bool Uploads::Read(const std::string& name, int steps, const std::function<bool()>& read) {
  Operation run(desk_, name);
  const RowCount::UnderWay underWay(rows_, run);
  clsHX7Project& from = project();
  const auto tell = [this](const char* status, const char* words) {
    return [this, status, words] {
      desk_.StatusTold(std::string("Mechanical System Parameters Upload ") + status);
      ShowInformation(words);
    };
  };
  Connections faults;
  faults +=
      from.MechanicalSystemCheckSumFailed.Connect(tell("CheckSum Failed", kCheckSumFailedWords));
  faults += from.MechanicalSystemNoCheckSum.Connect(tell("Failed", kNoCheckSumWords));
  faults += from.MechanicalSystemZeroSystem.Connect(tell("Failed", kZeroSystemWords));
  run.Begin(steps, true);
  const bool done = read();
  run.End(done ? "complete" : session_.StopProcedure() ? "stopped" : "failed");
  return done;
}

void Uploads::ShowDifferences() {
  std::vector<PartComparison> parts = project().CompareWithUpload();
  // A machine that cannot be used was asked about, and is no value that a Yes would take.
  for (PartComparison& part : parts) {
    std::erase_if(part.differences, [](const ProjectDifference& d) { return d.row.empty(); });
  }
  if (Differs(parts)) desk_.DifferencesFound(parts);
}

bool Uploads::Commit(HistoryRun& history, const std::function<bool()>& commit) {
  (void)history.NoteBefore(project().ProjectDatabasePath(), false);
  if (!commit()) {
    history.ForgetBefore();
    history.End("not taken");
    return false;
  }
  (void)history.NoteAfter(project().ProjectDatabasePath());
  history.End("complete");
  if (!history.Remark().empty()) LogWarning("history", history.Remark());
  // What nobody could have typed.
  if (!project().Doubts().empty()) desk_.DoubtsFound(project());
  return true;
}

bool Uploads::TellUnread(HistoryRun& history, const std::string& name) {
  const bool stopped = session_.StopProcedure();
  const std::string words =
      stopped ? "Upload " + name + " terminated!"
              : FailureText("Could not upload " + name + " from controller!", kUnchanged);
  history.End(stopped ? "stopped" : "failed", words);
  ShowExclamation(words);
  session_.SetStopProcedure(false);
  return false;
}

bool Uploads::UploadAll() {
  return Trapped("Upload All failed!\r", [this] {
    if (!connection_.GoOnlineFor("Upload failed!")) return false;
    if (!Ask("All existing table data and parameter data will be overwritten with hardware "
             "data\rconverted to units associated to the mechanical system definition!\r"
             "Electronic gear ratio parameters may not match definition!\r"
             "Do you wish to continue?",
             Everything())) {
      return false;
    }
    HistoryRun history(project().FileName(), session_.Axis(), "Upload All", true, Everything());
    history.Begin();
    if (!Read("Upload All Data", StepsOf(Everything()),
              [this] { return RunUploadStages(project()); })) {
      return false;
    }
    ShowDifferences();
    return Commit(history, [this] {
      if (!AskToCommitUpload(project())) return false;
      TakeMotor();
      return true;
    });
  });
}

// What a failed or stopped upload has read leaves no trace: one tool's rows would be half the
// file's and half the amplifier's.
bool Uploads::UploadItem(const TransferItem& item) {
  const std::string& name = item.name;
  return Trapped("Upload " + name + " failed!\r", [&] {
    if (!connection_.GoOnlineFor("Upload failed!")) return false;
    if (!Ask("Existing " + name +
                 " will be overwritten with hardware data!\rDo you wish to continue?",
             item.tools)) {
      return false;
    }
    HistoryRun history(project().FileName(), session_.Axis(), "Upload " + name, true, item.tools);
    history.Begin();
    if (!Read("Upload " + name, StepsOf(item.tools),
              [&] { return project().UploadParts(item.tools); })) {
      return TellUnread(history, name);
    }
    ShowDifferences();
    return Commit(history, [&] {
      if (!AskYesNo(name +
                    " successfully uploaded from controller.\rCommit uploaded data to project?")) {
        project().DropUpload();
        return false;
      }
      if (!project().CommitUpload()) return false;
      if (std::ranges::find(item.tools, Tool::editor) != item.tools.end()) TakeMotor();
      return true;
    });
  });
}

bool Uploads::TakeGains() {
  return Read("Upload Tuning Parameters", project().Tuning().RowsInArray(), [this] {
    if (!project().UploadParts({Tool::tuning}) || !project().CommitUpload()) return false;
    if (!project().Doubts().empty()) desk_.DoubtsFound(project());
    return true;
  });
}

// The parameters are those of the connected motor now; its machine may have been described for
// another.
void Uploads::TakeMotor() {
  connection_.Motor().Take();
  connection_.Motor().Tell();
}

bool Uploads::ReadParts(const std::vector<Tool>& parts) {
  project().BeginUpload();
  for (const Tool part : parts) {
    if (project().UploadPart(part)) continue;
    // No exchange failed: the amplifier told a machine that cannot be used.
    const bool unusable = session_.Helix7()->LatestFailure().code == kSuccess;
    if (session_.StopProcedure() || part != Tool::mechanicalSystem || !unusable) {
      project().DropUpload();
      return false;
    }
  }
  return project().CommitUpload();
}

bool Uploads::ReadWhatIsThere(const std::vector<Tool>& parts) {
  Operation run(desk_, "Keep What Is There");
  const RowCount::UnderWay underWay(rows_, run);
  run.Begin(StepsOf(parts), true);
  const bool read = ReadParts(parts);
  run.End(read ? "complete" : session_.StopProcedure() ? "stopped" : "failed");
  if (read) project().Save();
  return read;
}

}  // namespace velmoor
