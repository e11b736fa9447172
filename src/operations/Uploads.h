// Reading a project, whole or in part, from the amplifier: the questions, the progress and the
// words at the end, for the main window and the console program alike; and what is read to be kept
// before it is overwritten.
//
// Owned beside the session. Each operation goes online first and stays there. The result tells
// whether it was done; what went wrong, or that the user refused, was told or asked before.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "operations/Desk.h"
#include "operations/HardwareConnection.h"
#include "operations/HistoryRun.h"
#include "operations/RowCount.h"
#include "operations/TransferItems.h"
#include "project/SessionState.h"

namespace velmoor {

class Uploads {
 public:
  // All three must outlive the object.
  Uploads(SessionState& session, Desk& desk, HardwareConnection& connection)
      : session_(session), desk_(desk), connection_(connection) {}
  // Behind the making of a project.
  void FollowProject();
  void ForgetProject() { project_.Clear(); }

  // True: what was read is in the project.
  bool UploadAll();
  bool UploadItem(const TransferItem& item);
  // The gains that the amplifier has made by itself, which the user has agreed to take.
  bool TakeGains();
  // Reads those parts into the project and saves it, without a question. A machine in the amplifier
  // that cannot be used leaves the project's. False: stopped or failed; what failed on the link is
  // its latest failure.
  [[nodiscard]] bool ReadWhatIsThere(const std::vector<Tool>& parts);

 private:
  clsHX7Project& project() { return *session_.OwnProject(); }
  [[nodiscard]] int StepsOf(const std::vector<Tool>& tools);
  [[nodiscard]] bool Ask(const std::string& question, const std::vector<Tool>& parts);
  // Runs `read` as the upload `name`; the machine's faults are told meanwhile.
  bool Read(const std::string& name, int steps, const std::function<bool()>& read);
  [[nodiscard]] bool ReadParts(const std::vector<Tool>& parts);
  // Takes what was read into the project, and tells what it has left in doubt.
  bool Commit(HistoryRun& history, const std::function<bool()>& commit);
  bool TellUnread(HistoryRun& history, const std::string& name);
  void ShowDifferences();
  void TakeMotor();

  SessionState& session_;
  Desk& desk_;
  HardwareConnection& connection_;
  RowCount rows_;
  Connections project_;
};

// What a transfer of everything moves: the editor has the parameters of the other tools.
[[nodiscard]] const std::vector<Tool>& Everything();

}  // namespace velmoor
