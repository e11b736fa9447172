// Moving a project, whole or in part, to the amplifier and back: the questions, their order, the
// progress and the words at the end, for the main window and the console program alike.
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
#include "operations/Operation.h"
#include "operations/TransferItems.h"
#include "operations/WrittenCheck.h"
#include "project/SessionState.h"

namespace velmoor {

class Transfers {
 public:
  // All three must outlive the object.
  Transfers(SessionState& session, Desk& desk, HardwareConnection& connection)
      : session_(session), desk_(desk), connection_(connection) {}
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

  // True: what was read is in the project.
  bool UploadAll();
  bool UploadItem(const TransferItem& item);

 private:
  clsHX7Project& project() { return *session_.OwnProject(); }
  [[nodiscard]] int StepsOf(const std::vector<Tool>& tools);
  [[nodiscard]] int StepsOfEverything();
  // Online, and the user wants this motor to get the project.
  [[nodiscard]] bool Reach();
  // The values of those parts that travel.
  [[nodiscard]] int ValuesOf(const std::vector<Tool>& parts, bool all);
  // The question before an upload of those parts.
  [[nodiscard]] bool AskToUpload(const std::string& question, const std::vector<Tool>& parts);
  // The question before a download of those parts, with the choice to read them back.
  [[nodiscard]] bool AskToDownload(const std::string& question, const std::vector<Tool>& parts,
                                   bool all);
  // Runs `send` as the download `name`, "Download Jog Table", to its last words.
  bool Send(const std::string& name, int steps, const std::function<bool()>& send);
  bool Finish(const std::string& name, const Operation& run);
  [[nodiscard]] bool ReadBack();
  [[nodiscard]] bool IsStoredAsSent();
  bool TellUnsent(const std::string& name, Operation& run);
  // Runs `read` as the upload `name`; the machine's faults are told meanwhile.
  bool Read(const std::string& name, int steps, const std::function<bool()>& read);
  void ShowUploadedDifferences();
  void TakeMotor();
  // False: a value is in doubt and stays so, of which the user was told.
  [[nodiscard]] bool MayDownload();
  // Tells what a committed upload has left in doubt; gives `committed`.
  bool Committed(bool committed);
  [[nodiscard]] bool AskRigidity();
  void OfferGains();

  SessionState& session_;
  Desk& desk_;
  HardwareConnection& connection_;
  Operation* run_ = nullptr;             // the one under way
  std::optional<std::int32_t> newRate_;  // that Pn801 was set to; 0 where it is none
  bool gainsChanged_ = false;            // by the rigidity that a download has sent
  bool verify_ = false;
  std::optional<WrittenCheck> check_;  // of the download under way
  Connections project_;
};

}  // namespace velmoor
