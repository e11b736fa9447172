#include "app/LineRunner.h"

#include "platform/Events.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/ScopedFlag.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "project/Doubts.h"

namespace velmoor {
namespace {

constexpr int kStepsOfAnAxis = 1000;

// Boxes of a run take the place of the real ones, and the session's settings are its own meanwhile.
class Meanwhile {
 public:
  Meanwhile(SessionState& session, MessageBoxes& boxes)
      : session_(session),
        boxes_(std::exchange(world().boxes, &boxes)),
        com_(session.COM()),
        rate_(session.BaudRate()),
        axis_(session.Axis()) {
    session_.SetServesWhileWaiting(true);
  }
  ~Meanwhile() {
    session_.SetServesWhileWaiting(false);
    world().boxes = boxes_;
    session_.SetCOM(com_);
    session_.SetBaudRate(rate_);
    session_.SetAxis(axis_);
    session_.SetStopProcedure(false);
  }
  Meanwhile(const Meanwhile&) = delete;
  Meanwhile& operator=(const Meanwhile&) = delete;

 private:
  SessionState& session_;
  MessageBoxes* boxes_;
  std::int16_t com_;
  std::int32_t rate_;
  std::string axis_;
};

}  // namespace

// ---- the run

LineTable LineRunner::Run(const std::string& caption, const LineFile& line,
                          const std::vector<LineAxis>& axes, std::int16_t com,
                          const std::function<LineTable(LineRun& run)>& work) {
  LineTable table;
  RunAlone(caption, [&] {
    procedure_->Steps = static_cast<int>(axes.size()) * kStepsOfAnAxis;
    LineRun run(*this, line, axes, com);
    table = work(run);
  });
  return table;
}

void LineRunner::RunAlone(const std::string& caption, const std::function<void()>& work) {
  stopped_ = false;
  boxes_.told.clear();
  boxes_.address.clear();
  boxes_.Agree(true);
  const ScopedFlag running(runs_);
  const Meanwhile meanwhile(session_, boxes_);
  operations_.FollowDevice();
  procedure_ = std::make_unique<clsHX7Procedure>();
  procedure_->Current = "Asking who is there";
  procedure_->Show_Procedure(caption, true);
  Trapped(caption + ": ", [&work] {
    work();
    return true;
  });
  operations_.connection.Leave();
  DropProject();
  procedure_.reset();
}

void LineRunner::DropProject() {
  operations_.ForgetProject();
  (void)session_.SwapProject(nullptr);
}

std::string LineRunner::ToldOf(const std::string& address) const {
  const auto found = boxes_.told.find(address);
  return found == boxes_.told.end() ? std::string() : found->second;
}

void LineRunner::RunBoxes::Told(const std::string& text, bool failure) {
  if (!failure) return;
  std::string& all = told[address];
  all += (all.empty() ? "" : "  ") + OneLine(text);
}

// ---- LineHost

bool LineRunner::Open(const std::string& path) {
  // The one before goes with its working file first.
  DropProject();
  (void)session_.SwapProject(std::make_unique<clsHX7Project>());
  clsHX7Project& project = *session_.OwnProject();
  project.SetWorkingDirectory(GetFileDirectory(path));
  std::string reason;
  if (!project.OpenProject(path, GetFileTitle(path), reason)) {
    ShowCritical(reason + "\rProject '" + GetFileTitle(path) + "' cannot be opened.");
    return false;
  }
  operations_.FollowProject();
  boxes_.TakeAsRemarks();
  return true;
}

// Nobody has agreed to replace what another program wrote.
bool LineRunner::Save() {
  const std::string concern = session_.OwnProject()->SaveConcern();
  if (!concern.empty()) {
    ShowExclamation(concern + "\rNothing was saved.");
    return false;
  }
  session_.OwnProject()->Save();
  return true;
}

void LineRunner::AxisBegins(const LineAxis& axis, std::size_t number, std::size_t count) {
  number_ = number;
  boxes_.address = axis.address;
  axisText_ = "Axis " + axis.address + (axis.name.empty() ? "" : " " + axis.name);
  procedure_->Total = axisText_ + ", " + NumberText(number + 1) + " of " + NumberText(count);
  ShowStep({}, 0, 1);
  YieldEvents();
}

void LineRunner::AxisEnds(const LineAxis& /*axis*/, const LineResult& /*result*/) {
  boxes_.address.clear();
  ShowStep({}, 1, 1);
  YieldEvents();
}

// ---- Desk

void LineRunner::ShowStep(const std::string& text, int finished, int steps) {
  if (!procedure_) return;
  procedure_->Current = text;
  procedure_->CurrentFinished = finished;
  procedure_->CurrentSteps = steps;
  const int share =
      steps > 0 ? static_cast<int>(std::int64_t{kStepsOfAnAxis} * finished / steps) : 0;
  procedure_->Finished = static_cast<int>(number_) * kStepsOfAnAxis + share;
}

void LineRunner::WorkBegins(const std::string& caption, int steps, bool /*items*/) {
  ShowStep(caption, 0, steps);
}

void LineRunner::WorkGoesOn(const WorkStep& step) {
  ShowStep(step.current.empty() ? step.total : step.current, step.finished, step.steps);
}

void LineRunner::SearchGoesOn(std::int32_t bitsPerSecond, const std::string& axis, int /*tries*/) {
  if (procedure_) {
    procedure_->Current = "Asking axis " + axis + " at " + NumberText(bitsPerSecond) + " bit/s";
  }
}

void LineRunner::DoubtsFound(clsHX7Project& project) {
  ShowExclamation("Values in doubt:\r" + InWords(project.Doubts()));
}

}  // namespace velmoor
