// Moving a project, whole or in part, to the amplifier: the questions, their order, the progress
// and the words at the end, for the main window and the console program alike; and sending back
// what the amplifier has held before.
//
// Owned beside the session. Each operation goes online first and stays there. The result tells
// whether it was done; what went wrong, or that the user refused, was told or asked before.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "operations/Desk.h"
#include "operations/HardwareConnection.h"
#include "operations/HistoryRun.h"
#include "operations/Operation.h"
#include "operations/RowCount.h"
#include "operations/TransferItems.h"
#include "operations/Uploads.h"
#include "operations/WrittenCheck.h"
#include "project/SessionState.h"

namespace velmoor {

class Transfers {
 public:
  // All must outlive the object.
  Transfers(SessionState& session, Desk& desk, HardwareConnection& connection, Uploads& uploads)
      : session_(session), desk_(desk), connection_(connection), uploads_(uploads) {}
  // Behind the making of a project.
  void FollowProject();
  void ForgetProject() { project_.Clear(); }

  bool DownloadAll();
  // Sends what is marked; where nothing is, tells so and is done.
  bool DownloadNew();
  // `prepare` runs between the question and the transfer, which it may refuse.
  bool DownloadItem(const TransferItem& item, const std::function<bool()>& prepare);
  // The gains, behind their own questions; `asked`: the window of the gains has asked them.
  bool DownloadTuning(bool asked);
  // Whether what the next download sends is read back; the question before it offers it.
  void SetVerify(bool verify) { verify_ = verify; }

  // Whether what the next download overwrites is read first, and kept in the project's history;
  // nothing: as the question before it offers, where somebody sees it.
  void SetKeep(std::optional<bool> keep) { keep_ = keep; }

  // Sends a state of the project's history, what the transfer of that entry has overwritten or,
  // with `after`, brought; only the parts that it moved. The project stays, and what differs from
  // the state is marked in it.
  bool Restore(const HistoryEntry& entry, bool after);

 private:
  clsHX7Project& project() { return *session_.OwnProject(); }
  [[nodiscard]] int StepsOf(const std::vector<Tool>& tools);
  [[nodiscard]] int StepsOfEverything();
  // Online, and the user wants this motor to get the project.
  [[nodiscard]] bool Reach();
  // The question before a download of those parts, with the choices to read them back, and to keep
  // what is there first; `keep` is what is offered of that, nothing: it makes no sense.
  [[nodiscard]] bool AskToDownload(const std::string& question, const std::vector<Tool>& parts,
                                   bool all, std::optional<bool> keep);
  [[nodiscard]] bool OffersToKeep(const HistoryRun& history) const;
  [[nodiscard]] HistoryRun HistoryOf(const std::string& name, const std::vector<Tool>& parts);
  // Reads what will be overwritten, where that is wanted, into the history. False: it failed, of
  // which the user was told.
  [[nodiscard]] bool KeepFirst(HistoryRun& history, const std::vector<Tool>& parts);
  // Runs `send` as the download `name`, "Download Jog Table", to its last words.
  bool Send(HistoryRun& history, const std::string& name, int steps,
            const std::function<bool()>& send);
  bool Finish(HistoryRun& history, const std::string& name, const Operation& run);
  [[nodiscard]] bool ReadBack();
  [[nodiscard]] bool IsStoredAsSent(HistoryRun& history);
  bool TellUnsent(HistoryRun& history, const std::string& name, Operation& run);
  // False: a value is in doubt and stays so, of which the user was told.
  [[nodiscard]] bool MayDownload();
  [[nodiscard]] bool AskRigidity();
  void OfferGains();
  // The session's project is another from now on.
  void FollowAll();
  void ForgetAll();
  // Marks in the project, and in its file, what differs from a state that goes to the amplifier.
  void MarkWhatDiffers(const std::string& state);
  bool SendState(HistoryRun& history, const std::string& state, const std::vector<Tool>& parts);

  SessionState& session_;
  Desk& desk_;
  HardwareConnection& connection_;
  Uploads& uploads_;
  RowCount rows_;
  std::optional<std::int32_t> newRate_;  // that Pn801 was set to; 0 where it is none
  bool gainsChanged_ = false;            // by the rigidity that a download has sent
  bool verify_ = false;
  std::optional<bool> keep_;
  bool keeps_ = false;                 // as was answered for the download under way
  std::optional<WrittenCheck> check_;  // of the download under way
  Connections project_;
};

}  // namespace velmoor
