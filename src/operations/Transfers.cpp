#include "operations/Transfers.h"

#include <algorithm>

#include "link/BaudRates.h"
#include "operations/FailureText.h"
#include "operations/ProjectAside.h"
#include "operations/TransferTime.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "project/ProjectCompare.h"

namespace velmoor {
namespace {

constexpr const char* kDownloadFailed = "Error downloading data to controller!";
constexpr const char* kAtNextStart = "The parameters that were sent take effect at its next start.";

}  // namespace

void Transfers::FollowProject() {
  clsHX7Project& followed = project();
  project_.Clear();
  project_ += followed.ToolDownloading.Connect(rows_.Listener(true));
  project_ += followed.ToolStatus.Connect([this](Tool tool, const std::string& status) {
    desk_.StatusTold(std::string(InfoOf(tool).status) + " " + status);
    if (status.ends_with("Failed")) connection_.Suspect();
  });
  project_ += followed.DownloadComplete.Connect([this] { desk_.StatusTold("Download Complete"); });
  project_ += followed.RigidityChanged.Connect([this] {
    // A download is not over: the amplifier is deaf while it restarts.
    if (rows_.Run() != nullptr) {
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

bool Transfers::AskToDownload(const std::string& question, const std::vector<Tool>& parts, bool all,
                              std::optional<bool> keep) {
  const std::int32_t rate = session_.BaudRate();
  int values = 0;
  int held = 0;
  for (const Tool part : parts) {
    values += project().ValuesOf(part, all);
    held += project().ValuesOf(part, true);
  }
  const auto more = [rate](int count) {
    return " (about " + NumberText(TransferSeconds(count, Way::read, rate)) + " s more)";
  };
  BoxTick keeping{"&Keep what is there first, in the history" + more(held), keep.value_or(false)};
  BoxTick tick{"&Verify: read back what was sent before it is stored" + more(values), verify_,
               keep ? &keeping : nullptr};
  const bool agreed = AskOkCancel(question + "\r\r" + TransferCost(values, Way::write, rate), tick);
  verify_ = tick.on;
  keeps_ = keep && keeping.on;
  return agreed;
}

bool Transfers::ReadBack() {
  return check_->ReadAll([this](int value, int values) {
    if (rows_.Run() != nullptr) rows_.Run()->ShowCheck(value, values);
    return !session_.StopProcedure();
  });
}

bool Transfers::Send(HistoryRun& history, const std::string& name, int steps,
                     const std::function<bool()>& send) {
  Operation run(desk_, name);
  const RowCount::UnderWay underWay(rows_, run);
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
  if (!send()) return TellUnsent(history, name, run);
  run.End(check_ ? "complete and verified" : "complete");
  rows_.Forget();
  return Finish(history, name, run);
}

// The amplifier holds behind its restart what it had stored.
bool Transfers::IsStoredAsSent(HistoryRun& history) {
  if (!check_ || check_->ReadSample()) return true;
  const std::string words =
      FailureText("Not everything is stored as it was sent!", OfferText(project()));
  history.End("failed", words);
  ShowExclamation(words + history.Remark());
  return false;
}

bool Transfers::TellUnsent(HistoryRun& history, const std::string& name, Operation& run) {
  const bool stopped = session_.StopProcedure();
  run.End(stopped ? "stopped" : "failed");
  const std::string offer = OfferText(project());
  if (stopped) {
    session_.SetStopProcedure(false);
  } else {
    connection_.Suspect();
  }
  const std::string words = stopped ? name + " terminated!" + (offer.empty() ? "" : "\r\r" + offer)
                                    : FailureText(kDownloadFailed, offer);
  history.End(stopped ? "stopped" : "failed", words);
  ShowExclamation(words + history.Remark());
  return false;
}

// One box for all: what was sent the amplifier has, whatever became of its restart.
bool Transfers::Finish(HistoryRun& history, const std::string& name, const Operation& run) {
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
    if (good && !IsStoredAsSent(history)) return false;
    words = good ? words + "  The amplifier has restarted." : sure ? words : doubt;
    if (!restarted.words.empty()) words += "\r" + restarted.words;
  }
  if (gainsChanged_ && good) OfferGains();
  // What was sent the amplifier has, whatever became of its restart.
  (void)history.NoteAfter(project().ProjectDatabasePath());
  history.End(check_ ? "complete and verified" : "complete", good ? std::string() : words);
  words += history.Remark();
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

bool Transfers::AskRigidity() {
  return AskOkCancel("Rigidity setting will be changed to " +
                     std::to_string(project().Tuning().GetRigidity()) +
                     ".\r(Note: Parameters 100, 101, 102, and 401 will be changed based on "
                     "rigidity.)\rDo you wish to change rigidity setting?");
}

bool Transfers::DownloadAll() {
  return Trapped("Download All failed!\r", [this] {
    if (!Reach()) return false;
    HistoryRun history = HistoryOf("Download All", Everything());
    if (!AskToDownload("All parameter and table data will be downloaded to the controller.\r"
                       "Do you wish to proceed?",
                       Everything(), true, OffersToKeep(history))) {
      return false;
    }
    clsHX7Tuning& tuning = project().Tuning();
    if (tuning.ChangedRigidity() && !AskRigidity()) tuning.SetChangedRigidity(false);
    return KeepFirst(history, Everything()) && Send(history, "Download All", StepsOfEverything(),
                                                    [this] { return project().DownloadAll(); });
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
                       Everything(), false, keep_.value_or(false))) {
      return false;
    }
    clsHX7Tuning& tuning = project().Tuning();
    const bool asks = dirty.find("Tuning") != std::string::npos && tuning.ChangedRigidity();
    if (asks && !AskRigidity()) tuning.SetChangedRigidity(false);
    HistoryRun history = HistoryOf("Download New", Everything());
    return KeepFirst(history, Everything()) &&
           Send(history, "Download New", project().GetNumberOfNewDownloads(),
                [this] { return project().Download(); });
  });
}

bool Transfers::DownloadItem(const TransferItem& item, const std::function<bool()>& prepare) {
  return Trapped("Download " + item.name + " failed!\r", [&] {
    if (!Reach()) return false;
    if (!AskToDownload(item.name + " of the project will be downloaded to the controller.\r"
                                   "Do you wish to proceed?",
                       item.tools, true, keep_.value_or(false)) ||
        !prepare()) {
      return false;
    }
    const std::string name = "Download " + item.name;
    HistoryRun history = HistoryOf(name, item.tools);
    return KeepFirst(history, item.tools) && Send(history, name, StepsOf(item.tools), [&] {
             return project().DownloadParts(item.tools);
           });
  });
}

bool Transfers::DownloadTuning(bool asked) {
  clsHX7Tuning& tuning = project().Tuning();
  if (!asked) {
    if (!AskToDownload("Existing gain tuning parameters in hardware will be overwritten!\r"
                       "Do you wish to proceed?",
                       {Tool::tuning}, true, std::nullopt)) {
      return false;
    }
    if (tuning.ChangedRigidity() && !AskRigidity()) tuning.SetChangedRigidity(false);
  }
  return Trapped("Download Tuning Parameters failed!\r", [&] {
    if (!Reach()) return false;
    HistoryRun history = HistoryOf("Download Tuning Parameters", {Tool::tuning});
    return Send(history, "Download Tuning Parameters", tuning.RowsInArray(),
                [this] { return project().DownloadParts({Tool::tuning}); });
  });
}

void Transfers::OfferGains() {
  if (!AskYesNo("Rigidity setting changed successfully.\r"
                "Do you wish to update Gain Tuning parameter values?")) {
    return;
  }
  // The Yes is the agreement to take them into the project.
  if (!uploads_.TakeGains()) desk_.StatusTold("Tuning Parameters Upload parameters failed");
}

// ---- the history

HistoryRun Transfers::HistoryOf(const std::string& name, const std::vector<Tool>& parts) {
  return {project().FileName(), session_.Axis(), name, false, parts};
}

// Where nobody sees the question nothing is kept that was not asked for.
bool Transfers::OffersToKeep(const HistoryRun& history) const {
  if (keep_ || !desk_.IsAttended()) return keep_.value_or(false);
  return !history.IsContentKnown();
}

void Transfers::FollowAll() {
  connection_.FollowProject();
  uploads_.FollowProject();
  FollowProject();
}

void Transfers::ForgetAll() {
  connection_.ForgetProject();
  uploads_.ForgetProject();
  ForgetProject();
}

bool Transfers::KeepFirst(HistoryRun& history, const std::vector<Tool>& parts) {
  bool kept = true;
  if (keeps_) {
    const auto place = history.NoteBefore(project().ProjectDatabasePath(), true);
    ProjectAside aside(
        session_, [this] { FollowAll(); }, [this] { ForgetAll(); });
    kept = place && aside.Open(*place) && uploads_.ReadWhatIsThere(parts);
  } else {
    history.TakeKnownBefore();
  }
  if (!kept) {
    const bool stopped = session_.StopProcedure();
    session_.SetStopProcedure(false);
    history.ForgetBefore();
    const std::string words =
        FailureText("What is there could not be kept!",
                    (stopped ? "It was stopped.  " : "") + std::string("Nothing was sent."));
    history.End(stopped ? "stopped" : "failed", words);
    ShowExclamation(words + history.Remark());
    return false;
  }
  (void)history.NoteAfter(project().ProjectDatabasePath());
  history.Begin();
  return true;
}

void Transfers::MarkWhatDiffers(const std::string& state) {
  clsHX7Project::HeldOtherwise what;
  for (const PartComparison& part : CompareProjects(project().ProjectDatabasePath(), state)) {
    for (const ProjectDifference& value : part.differences) {
      const auto table = std::ranges::find_if(
          kTables, [&part](Tool tool) { return InfoOf(tool).item == part.part; });
      if (table == kTables.end()) {
        what.parameters.push_back(value.row.substr(0, value.row.find('.')));
      } else {
        const auto number = ParseWhole(value.row);
        if (number) {
          what.rows[*table].push_back(static_cast<int>(*number) - InfoOf(*table).firstRow + 1);
        }
      }
    }
  }
  project().MarkHeldOtherwise(what);
}

bool Transfers::SendState(HistoryRun& history, const std::string& state,
                          const std::vector<Tool>& parts) {
  ProjectAside aside(
      session_, [this] { FollowAll(); }, [this] { ForgetAll(); });
  if (!aside.Open(state) || !MayDownload()) return false;
  history.Begin();
  const bool whole = parts.size() == Everything().size();
  return Send(history, "Restore", whole ? StepsOfEverything() : StepsOf(parts),
              [&] { return whole ? project().DownloadAll() : project().DownloadParts(parts); });
}

bool Transfers::Restore(const HistoryEntry& entry, bool after) {
  return Trapped("Restore failed!\r", [&] {
    const std::string& name = after ? entry.after : entry.before;
    if (name.empty()) {
      ShowExclamation("What the amplifier held " + std::string(after ? "behind" : "before") +
                      " that transfer is not known: nothing can be sent back.");
      return false;
    }
    if (!connection_.GoOnlineFor("Restore failed!") || !connection_.Motor().MayGoOn()) return false;
    if (!AskToDownload("What axis " + entry.axis + " held " + (after ? "behind" : "before") +
                           " \"" + entry.name + "\" of " + entry.moment + " will be sent to axis " +
                           session_.Axis() +
                           ".\rThe project stays as it is; where it differs it is on offer to be "
                           "downloaded then.\rDo you wish to proceed?",
                       entry.parts, true, std::nullopt)) {
      return false;
    }
    HistoryRun history = HistoryOf("Restore of entry " + NumberText(entry.number), entry.parts);
    const auto state = history.NoteAfter(TransferHistory(project().FileName()).PathOf(name));
    if (!state) {
      ShowExclamation("The state cannot be sent back!" + history.Remark());
      return false;
    }
    history.TakeKnownBefore();
    // On disk before the first line goes out.
    MarkWhatDiffers(*state);
    return SendState(history, *state, entry.parts);
  });
}

}  // namespace velmoor
