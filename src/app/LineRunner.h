// The main window's session as the program that runs a work over a line: the project of each axis
// takes the place of the session's in turn, questions are answered by what was agreed to, and one
// progress goes over all axes.
//
// Owned beside the session. The session has no project of its own and is offline before a run, and
// so behind it. While a run goes on no command of the main window does.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/clsHX7Procedure.h"
#include "operations/LineRun.h"

namespace velmoor {

class LineRunner final : public LineHost, private Desk {
 public:
  // `session` must outlive the object.
  explicit LineRunner(SessionState& session) : session_(session) {}

  // Runs `work` for those axes of the line, which stands behind the session's port `com`, under
  // that caption. What the session talks with is as before afterwards, but for the searches of its
  // device object, which whoever calls follows anew.
  [[nodiscard]] LineTable Run(const std::string& caption, const LineFile& line,
                              const std::vector<LineAxis>& axes, std::int16_t com,
                              const std::function<LineTable(LineRun& run)>& work);
  // The same for a work that needs no axes yet.
  void RunAlone(const std::string& caption, const std::function<void()>& work);

  [[nodiscard]] bool Runs() const { return runs_; }
  [[nodiscard]] bool Stopped() const override { return runs_ && stopped_; }
  // The user's Stop: holds until the run is over.
  void Stop() { stopped_ = runs_; }
  // What was told while that axis had its turn, on one line; that of the whole by an empty address.
  [[nodiscard]] std::string ToldOf(const std::string& address) const;

  // ---- LineHost
  [[nodiscard]] SessionState& Session() override { return session_; }
  [[nodiscard]] Operations& Hardware() override { return operations_; }
  [[nodiscard]] AgreedBoxes& Boxes() override { return boxes_; }
  [[nodiscard]] bool Open(const std::string& path) override;
  [[nodiscard]] bool Save() override;
  void AxisBegins(const LineAxis& axis, std::size_t number, std::size_t count) override;
  void AxisEnds(const LineAxis& axis, const LineResult& result) override;

 private:
  class RunBoxes final : public AgreedBoxes {
   public:
    std::string address;                      // whose turn it is
    std::map<std::string, std::string> told;  // by address

   protected:
    void Told(const std::string& text, bool failure) override;
  };

  // ---- Desk
  void WorkBegins(const std::string& caption, int steps, bool items) override;
  void WorkGoesOn(const WorkStep& step) override;
  void WorkEnds() override {}
  void SearchGoesOn(std::int32_t bitsPerSecond, const std::string& axis, int tries) override;
  void SearchEnds() override {}
  void StatusTold(const std::string& /*text*/) override {}
  void LineChanged(LineState /*state*/) override {}
  void DifferencesFound(const std::vector<PartComparison>& /*parts*/) override {}
  void DoubtsFound(clsHX7Project& project) override;
  // The question before the run was for all axes.
  [[nodiscard]] bool IsAttended() const override { return false; }

  void DropProject();
  void ShowStep(const std::string& text, int finished, int steps);

  SessionState& session_;
  RunBoxes boxes_;
  std::unique_ptr<clsHX7Procedure> procedure_;
  std::string axisText_;
  std::size_t number_ = 0;
  bool runs_ = false;
  bool stopped_ = false;
  Operations operations_{session_, *this};
};

}  // namespace velmoor
