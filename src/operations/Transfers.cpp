#include "operations/Transfers.h"

#include <algorithm>

#include "link/BaudRates.h"
#include "operations/FailureText.h"
#include "operations/TransferTime.h"
#include "operations/UploadFlow.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "project/ProjectCompare.h"

namespace velmoor {
namespace {

constexpr const char* kDownloadFailed = "Error downloading data to controller!";
// What a download of everything sends: the editor has the parameters of the other tools.
const std::vector<Tool> kEverything{Tool::editor, Tool::mechanicalSystem, Tool::position, Tool::jog,
                                    Tool::zone};
constexpr const char* kAtNextStart = "The parameters that were sent take effect at its next start.";
constexpr const char* kUnchanged = "The project is unchanged.";

// The rows that the project tells of are those of this run.
class UnderWay {
 public:
  UnderWay(Operation*& place, Operation& run) : place_(place) { place_ = &run; }
  ~UnderWay() { place_ = nullptr; }
  UnderWay(const UnderWay&) = delete;
  UnderWay& operator=(const UnderWay&) = delete;

 private:
  Operation*& place_;
};

}  // namespace

void Transfers::FollowProject() {
  clsHX7Project& followed = project();
  project_.Clear();
  const auto count = [this](bool downloading) {
    return [this, downloading](Tool tool, std::int16_t row, std::int16_t rows) {
      if (run_ != nullptr) run_->CountRow(tool, downloading, row, rows);
    };
  };
  project_ += followed.ToolDownloading.Connect(count(true));
  project_ += followed.ToolUploading.Connect(count(false));
  project_ += followed.ToolStatus.Connect([this](Tool tool, const std::string& status) {
    desk_.StatusTold(std::string(InfoOf(tool).status) + " " + status);
    if (status.ends_with("Failed")) connection_.Suspect();
  });
  project_ += followed.DownloadComplete.Connect([this] { desk_.StatusTold("Download Complete"); });
  project_ += followed.UploadComplete.Connect([this] { desk_.StatusTold("Upload Complete"); });
  project_ += followed.RigidityChanged.Connect([this] {
    // A download is not over: the amplifier is deaf while it restarts.
    if (run_ != nullptr) {
      gainsChanged_ = true;
    } else {
      OfferGains();
    }
  });
  project_ += followed.BaudRateChanged.Connect(
      [this](const std::string& value) { newRate_ = GetBaudRate(Int32FromCell(value)); });
  project_ += followed.BaudRateChangeFailed.Connect([this] { newRate_.reset(); });
}

int Transfers::StepsOf(const std::vector<Tool>& tools) {
  int steps = 0;
  for (const Tool tool : tools) steps += project().RowsOf(tool);
  return steps;
}

// Every row that tells of its progress. The machine is read with the gear ratio and the properties,
// which the editor sends.
int Transfers::StepsOfEverything() {
  const int machine = project().MechanicalSystem().NumMechSystemPns();
  return machine + StepsOf({Tool::editor, Tool::position, Tool::jog, Tool::zone});
}

// ---- download

bool Transfers::Reach() {
  return MayDownload() && connection_.GoOnlineFor("Download failed!") &&
         connection_.Motor().MayGoOn();
}

int Transfers::ValuesOf(const std::vector<Tool>& parts, bool all) {
  int values = 0;
  for (const Tool part : parts) values += project().ValuesOf(part, all);
  return values;
}

bool Transfers::AskToUpload(const std::string& question, const std::vector<Tool>& parts) {
  return AskExclamationYesNo(question + "\r\r" +
                             TransferCost(ValuesOf(parts, true), Way::read, session_.BaudRate()));
}

bool Transfers::AskToDownload(const std::string& question, const std::vector<Tool>& parts,
                              bool all) {
  const std::int32_t rate = session_.BaudRate();
  const int values = ValuesOf(parts, all);
  BoxTick tick{"&Verify: read back what was sent before it is stored (about " +
                   NumberText(TransferSeconds(values, Way::read, rate)) + " s more)",
               verify_};
  const bool agreed = AskOkCancel(question + "\r\r" + TransferCost(values, Way::write, rate), tick);
  verify_ = tick.on;
  return agreed;
}

bool Transfers::ReadBack() {
  return check_->ReadAll([this](int value, int values) {
    if (run_ != nullptr) run_->ShowCheck(value, values);
    return !session_.StopProcedure();
  });
}

bool Transfers::Send(const std::string& name, int steps, const std::function<bool()>& send) {
  Operation run(desk_, name);
  const UnderWay underWay(run_, run);
  newRate_.reset();
  gainsChanged_ = false;
  connection_.Motor().Note();
  const struct EndCheck {
    Transfers& transfers;
    ~EndCheck() {
      transfers.project().SetWrittenCheck({});
      transfers.check_.reset();
    }
  } endCheck{*this};
  if (verify_) {
    check_.emplace(session_);
    project().SetWrittenCheck([this] { return ReadBack(); });
  }
  run.Begin(steps, true);
  if (!send()) return TellUnsent(name, run);
  run.End(check_ ? "complete and verified" : "complete");
  run_ = nullptr;
  return Finish(name, run);
}

// The amplifier holds behind its restart what it had stored.
bool Transfers::IsStoredAsSent() {
  if (!check_ || check_->ReadSample()) return true;
  ShowExclamation(FailureText("Not everything is stored as it was sent!", OfferText(project())));
  return false;
}

bool Transfers::TellUnsent(const std::string& name, Operation& run) {
  const bool stopped = session_.StopProcedure();
  run.End(stopped ? "stopped" : "failed");
  const std::string offer = OfferText(project());
  if (stopped) {
    session_.SetStopProcedure(false);
    ShowExclamation(name + " terminated!" + (offer.empty() ? "" : "\r\r" + offer));
  } else {
    connection_.Suspect();
    ShowExclamation(FailureText(kDownloadFailed, offer));
  }
  return false;
}

// One box for all: what was sent the amplifier has, whatever became of its restart.
bool Transfers::Finish(const std::string& name, const Operation& run) {
  std::string words = name + " complete!\r" + run.Figures("sent") + " and stored.";
  const RestartOutcome restart = project().LatestRestart();
  bool good = true;
  if (restart == RestartOutcome::refused) {
    good = false;
    words = FailureText(words + "\rThe amplifier did not restart!", kAtNextStart);
  } else if (restart != RestartOutcome::none) {
    const std::string doubt =
        FailureText(words + "\rWhether the amplifier has restarted is not known!", kAtNextStart);
    const Restarted restarted = connection_.AwaitRestart(newRate_);
    // A speed that changed shows that it has.
    const bool sure =
        restart == RestartOutcome::sent || (restarted.found && !restarted.words.empty());
    good = restarted.found && sure;
    if (good && !IsStoredAsSent()) return false;
    words = good ? words + "  The amplifier has restarted." : sure ? words : doubt;
    if (!restarted.words.empty()) words += "\r" + restarted.words;
  }
  if (gainsChanged_ && good) OfferGains();
  if (good) {
    ShowInformation(words);
  } else {
    ShowExclamation(words);
  }
  return good;
}

// Before anything is asked and before the line is opened.
bool Transfers::MayDownload() {
  if (!project().Doubts().empty()) desk_.DoubtsFound(project());
  if (project().Doubts().empty()) return true;
  ShowExclamation("Nothing is downloaded while values of the project are in doubt!");
  return false;
}

// What an upload has brought that nobody could have typed.
bool Transfers::Committed(bool committed) {
  if (committed && !project().Doubts().empty()) desk_.DoubtsFound(project());
  return committed;
}

bool Transfers::AskRigidity() {
  return AskOkCancel("Rigidity setting will be changed to " +
                     std::to_string(project().Tuning().GetRigidity()) +
                     ".\r(Note: Parameters 100, 101, 102, and 401 will be changed based on "
                     "rigidity.)\rDo you wish to change rigidity setting?");
}

bool Transfers::DownloadAll() {
  return Trapped("Download All failed!\r", [this] {
    if (!Reach()) return false;
    if (!AskToDownload("All parameter and table data will be downloaded to the controller.\r"
                       "Do you wish to proceed?",
                       kEverything, true)) {
      return false;
    }
    clsHX7Tuning& tuning = project().Tuning();
    if (tuning.ChangedRigidity() && !AskRigidity()) tuning.SetChangedRigidity(false);
    return Send("Download All", StepsOfEverything(), [this] { return project().DownloadAll(); });
  });
}

bool Transfers::DownloadNew() {
  return Trapped("Download New failed!\r", [this] {
    if (!Reach()) return false;
    const std::string dirty = project().WhatIsDirty();
    if (dirty.empty()) {
      const std::string words =
          "No new changes have been committed!\r"
          "New items must be changed and committed before download!";
      // A script that finds nothing to send has not failed.
      if (desk_.IsAttended()) {
        ShowExclamation(words);
      } else {
        ShowInformation(words);
      }
      return true;
    }
    if (!AskToDownload("The following items have been modified:\r" + dirty +
                           "\rNew data will be downloaded to the controller.\r"
                           "Do you wish to proceed?",
                       kEverything, false)) {
      return false;
    }
    clsHX7Tuning& tuning = project().Tuning();
    const bool asks = dirty.find("Tuning") != std::string::npos && tuning.ChangedRigidity();
    if (asks && !AskRigidity()) tuning.SetChangedRigidity(false);
    return Send("Download New", project().GetNumberOfNewDownloads(),
                [this] { return project().Download(); });
  });
}

bool Transfers::DownloadItem(const TransferItem& item, const std::function<bool()>& prepare) {
  return Trapped("Download " + item.name + " failed!\r", [&] {
    if (!Reach()) return false;
    if (!AskToDownload(item.name + " of the project will be downloaded to the controller.\r"
                                   "Do you wish to proceed?",
                       item.tools, true) ||
        !prepare()) {
      return false;
    }
    return Send("Download " + item.name, StepsOf(item.tools),
                [&] { return project().DownloadParts(item.tools); });
  });
}

bool Transfers::DownloadTuning(bool asked) {
  clsHX7Tuning& tuning = project().Tuning();
  if (!asked) {
    if (!AskToDownload("Existing gain tuning parameters in hardware will be overwritten!\r"
                       "Do you wish to proceed?",
                       {Tool::tuning}, true)) {
      return false;
    }
    if (tuning.ChangedRigidity() && !AskRigidity()) tuning.SetChangedRigidity(false);
  }
  return Trapped("Download Tuning Parameters failed!\r", [&] {
    if (!Reach()) return false;
    return Send("Download Tuning Parameters", tuning.RowsInArray(),
                [this] { return project().DownloadParts({Tool::tuning}); });
  });
}

void Transfers::OfferGains() {
  if (!AskYesNo("Rigidity setting changed successfully.\r"
                "Do you wish to update Gain Tuning parameter values?")) {
    return;
  }
  // The Yes is the agreement to take them into the project.
  const bool taken = Read("Upload Tuning Parameters", project().Tuning().RowsInArray(), [this] {
    return project().UploadParts({Tool::tuning}) && Committed(project().CommitUpload());
  });
  if (!taken) desk_.StatusTold("Tuning Parameters Upload parameters failed");
}

// ---- upload

bool Transfers::Read(const std::string& name, int steps, const std::function<bool()>& read) {
  Operation run(desk_, name);
  const UnderWay underWay(run_, run);
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

void Transfers::ShowUploadedDifferences() {
  std::vector<PartComparison> parts = project().CompareWithUpload();
  // A machine that cannot be used was asked about, and is no value that a Yes would take.
  for (PartComparison& part : parts) {
    std::erase_if(part.differences, [](const ProjectDifference& d) { return d.row.empty(); });
  }
  if (Differs(parts)) desk_.DifferencesFound(parts);
}

bool Transfers::UploadAll() {
  return Trapped("Upload All failed!\r", [this] {
    if (!connection_.GoOnlineFor("Upload failed!")) return false;
    if (!AskToUpload("All existing table data and parameter data will be overwritten with hardware "
                     "data\rconverted to units associated to the mechanical system definition!\r"
                     "Electronic gear ratio parameters may not match definition!\r"
                     "Do you wish to continue?",
                     kEverything)) {
      return false;
    }
    const int steps =
        StepsOf({Tool::mechanicalSystem, Tool::editor, Tool::position, Tool::jog, Tool::zone});
    if (!Read("Upload All Data", steps, [this] { return RunUploadStages(project()); })) {
      return false;
    }
    ShowUploadedDifferences();
    if (!AskToCommitUpload(project())) return false;
    TakeMotor();
    return Committed(true);
  });
}

// What a failed or stopped upload has read leaves no trace: one tool's rows would be half the
// file's and half the amplifier's.
bool Transfers::UploadItem(const TransferItem& item) {
  const std::string& name = item.name;
  return Trapped("Upload " + name + " failed!\r", [&] {
    if (!connection_.GoOnlineFor("Upload failed!")) return false;
    if (!AskToUpload("Existing " + name +
                         " will be overwritten with hardware data!\rDo you wish to continue?",
                     item.tools)) {
      return false;
    }
    if (!Read("Upload " + name, StepsOf(item.tools),
              [&] { return project().UploadParts(item.tools); })) {
      if (session_.StopProcedure()) {
        ShowExclamation("Upload " + name + " terminated!");
      } else {
        ShowExclamation(FailureText("Could not upload " + name + " from controller!", kUnchanged));
      }
      session_.SetStopProcedure(false);
      return false;
    }
    ShowUploadedDifferences();
    if (AskYesNo(name +
                 " successfully uploaded from controller.\rCommit uploaded data to project?")) {
      if (!project().CommitUpload()) return false;
      if (std::ranges::find(item.tools, Tool::editor) != item.tools.end()) TakeMotor();
      return Committed(true);
    }
    project().DropUpload();
    return false;
  });
}

// The parameters are those of the connected motor now; its machine may have been described for
// another.
void Transfers::TakeMotor() {
  connection_.Motor().Take();
  connection_.Motor().Tell();
}

}  // namespace velmoor
