// The session of the console program: the same objects as the main window's, without windows, and
// the desk of its operations.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>

#include "operations/Operations.h"
#include "platform/Event.h"
#include "project/SessionState.h"

namespace velmoor {

// What leads on where a project of a newer version was refused.
inline constexpr const char* kReadOnlyHint =
    "\rshow, export, report, compare and diff read it with --read-only.";

class ConsoleSession final : public SessionState, private Desk {
 public:
  // Puts itself in force as gMainForm until destroyed. `progress` gets a line that is rewritten
  // during transfers; null: none. `notes` gets what a status bar would keep.
  // `ends` stops whatever is under way from the moment it is true.
  ConsoleSession(
      SerialPort& comm, std::ostream& notes, std::ostream* progress = nullptr,
      bool (*ends)() = [] { return false; });
  ~ConsoleSession() override;

  [[nodiscard]] bool StopProcedure() const override {
    return SessionState::StopProcedure() || ends_();
  }

  // Builds the catalogue's working copy for `strMotorSize` watts and reads it. False after a
  // failure, of which the user was told.
  bool Start(const std::string& strMotorSize);
  // Opens a project, and judges its values for a motor of `watts` where that is not empty. False
  // after a failure, of which the user was told.
  bool Open(const std::string& fileName, NewerProject newer = NewerProject::refuse,
            const std::string& watts = {});

  [[nodiscard]] Operations& Hardware() { return operations_; }
  clsHX7Project& project() { return *clsProject; }

 private:
  // ---- Desk
  void WorkBegins(const std::string&, int, bool) override {}
  void WorkGoesOn(const WorkStep& step) override;
  void WorkEnds() override { EndProgress(); }
  void SearchGoesOn(std::int32_t bitsPerSecond, const std::string& axis, int tries) override;
  void SearchEnds() override { EndProgress(); }
  void StatusTold(const std::string& text) override;
  void LineChanged(LineState) override {}
  // --yes has agreed to whatever would change.
  void DifferencesFound(const std::vector<PartComparison>&) override {}
  void DoubtsFound(clsHX7Project& project) override;
  [[nodiscard]] bool IsAttended() const override { return false; }

  void ShowProgress(const std::string& text);
  void EndProgress();

  std::ostream& notes_;
  std::ostream* progress_;
  bool (*ends_)();
  std::size_t progressWidth_ = 0;
  Operations operations_{*this, *this};
};

}  // namespace velmoor
