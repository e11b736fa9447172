#include "rehearsal/frmRehearsal.h"

#include <algorithm>
#include <utility>

#include "platform/FileDialogs.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/ScopedFlag.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "project/clsHX7Project.h"
#include "rehearsal/RehearsalRecord.h"
#include "windows/SaveAs.h"

namespace velmoor {
namespace {

constexpr double kSlice = 0.05;  // s of the axis, between two looks at the clock
constexpr int kSlicesPerTurn = 100;
constexpr std::chrono::milliseconds kTurn{30};     // for which no event is served, at most
constexpr double kShortest = 0.1, kLongest = 600;  // s, that a rehearsal may take
constexpr const char* kCsvFilter = "Comma-Separated Text (*.csv)|*.csv";

}  // namespace

void frmRehearsal::Rehearse() {
  if (IsOpen()) {
    BringToFront();
  } else if (!Show(FormMode::modeless)) {
    return;
  }
  Begin();
}

void frmRehearsal::Forget() {
  Unload();
  inputsGrid_ = {};
}

void frmRehearsal::FormLoad() {
  tmrRun_ = world().forms->NewTimer();
  tmrRun_->SetInterval(std::chrono::milliseconds(1));
  connections_ += tmrRun_->Tick.Connect([this] { GoOn(); });
  connections_ += ui().cmdRun.Click.Connect([this] { Begin(); });
  connections_ += ui().cmdStop.Click.Connect([this] {
    if (run_) End(true);
  });
  connections_ += ui().cmdExit.Click.Connect([this] { Unload(); });
  connections_ += ui().cmdSaveRecord.Click.Connect([this] { SaveRecord(); });
  connections_ += ui().cmdSavePicture.Click.Connect([this] { SavePicture(); });
  ConnectChart();
  ConnectFindings();
  ConnectInputs();
  ShowResult();
}

void frmRehearsal::FormUnload() {
  tmrRun_.reset();
  run_.reset();
  samples_.clear();
  chart_.Clear();
  result_ = {};
}

// ---- a run

// The filled steps; the one that was chosen stays so where it is still there.
void frmRehearsal::OfferSteps(clsHX7Project& project) {
  const int chosen = ui().cmbStart.ListIndex();
  const int before = chosen > 0 ? startSteps_.at(static_cast<std::size_t>(chosen) - 1) : 0;
  std::vector<std::string> items{"as the amplifier starts"};
  startSteps_.clear();
  const RehearsedProgramme programme(project);
  int index = 0;
  for (int step = 1; step <= programme.Steps(); ++step) {
    if (programme.IsBlank(step)) continue;
    startSteps_.push_back(step);
    items.push_back(NumberText(step) + " " + programme.Text(step, clsHX7Position::label));
    if (step == before) index = static_cast<int>(startSteps_.size());
  }
  ui().cmbStart.SetItems(items);
  ui().cmbStart.SetListIndex(index);
}

bool frmRehearsal::TakeOrder(RehearsalOrder& order) {
  const auto longest = ParseFloat(Trim(ui().txtLongest.Text()));
  if (!longest || *longest < kShortest || *longest > kLongest) {
    ShowExclamation("The longest time of a rehearsal is a number of seconds from 0.1 to 600.");
    ui().txtLongest.SetFocus();
    return false;
  }
  order.longest = *longest;
  const int chosen = ui().cmbStart.ListIndex();
  if (chosen > 0) order.startStep = startSteps_.at(static_cast<std::size_t>(chosen) - 1);
  try {
    order.inputs = ReadInputScript(inputsGrid_.Csv());
  } catch (const InputScriptError& error) {
    ShowExclamation(std::string("The inputs cannot be taken.\r") + error.what());
    return false;
  }
  return true;
}

void frmRehearsal::Begin() {
  if (run_ || !ui().vsInputs.FinishEdit()) return;
  const auto token = Token();
  clsHX7Project* const project = hooks_.project();
  if (project == nullptr || token.expired()) return;
  Trapped("frmRehearsal.Begin: ", [&] {
    OfferSteps(*project);
    RehearsalOrder order;
    if (!TakeOrder(order)) return false;
    samples_.clear();
    run_ = std::make_unique<Rehearsal>(
        *project, std::move(order),
        [this](const RehearsalSample& sample) { samples_.push_back(sample); });
    ui().lblSummary.SetTone(Tone::busy);
    OfferButtons();
    tmrRun_->SetEnabled(true);
    return true;
  });
}

void frmRehearsal::GoOn() {
  if (!run_) return;
  const auto until = world().clock->Monotonic() + kTurn;
  for (int i = 0; i < kSlicesPerTurn && world().clock->Monotonic() < until; ++i) {
    if (!run_->GoOn(kSlice)) return End(false);
  }
  ui().lblSummary.SetText(FixedText(run_->Seconds(), 1) + " s rehearsed so far...");
}

void frmRehearsal::End(bool byUser) {
  tmrRun_->SetEnabled(false);
  result_ = run_->End();
  units_ = run_->Programme().InUnits();
  chart_.Take(std::exchange(samples_, {}), result_, run_->Programme());
  stepsGrid_.SetRows(StepRows(result_, run_->Programme()));
  findingsGrid_.SetRows(FindingRows(result_));
  run_.reset();
  ShowResult();
  ui().lblSummary.SetText(Summary(byUser));
  ui().lblSummary.SetTone(result_.findings.empty() && !byUser ? Tone::good : Tone::alarm);
}

std::string frmRehearsal::Summary(bool byUser) const {
  const std::size_t findings = result_.findings.size();
  std::string text = byUser ? "Stopped.  " : "";
  if (result_.cycleSeconds) {
    text += "Cycle " + FixedText(*result_.cycleSeconds, 3) + " s, from step " +
            NumberText(result_.cycleStep) + " to step " + NumberText(result_.cycleStep) +
            " again; ";
  }
  return text + NumberText(result_.steps.size()) +
         (result_.steps.size() == 1 ? " step" : " steps") + " in " + FixedText(result_.seconds, 3) +
         " s, " +
         (findings == 0 ? "nothing found."
                        : NumberText(findings) + (findings == 1 ? " finding." : " findings."));
}

void frmRehearsal::ShowResult() {
  const ScopedFlag showing(showing_);
  ui().vsSteps.Refresh();
  ui().vsFindings.Refresh();
  ui().lblFindings.SetText(result_.findings.empty() ? "Nothing was found." : "");
  ShowChart();
  OfferButtons();
  if (result_.findings.empty()) return;
  // The first one is set off at once; the index table stays where the user has it.
  ui().vsFindings.SetCurrent(1, 0);
  LookAtFinding(false);
}

void frmRehearsal::OfferButtons() {
  ui().cmdRun.SetEnabled(!run_);
  ui().cmdStop.SetEnabled(run_ != nullptr);
  const bool has = !run_ && !chart_.Samples().empty();
  ui().cmdSaveRecord.SetEnabled(has);
  ui().cmdSavePicture.SetEnabled(has);
}

// ---- what the user looks at

void frmRehearsal::ConnectChart() {
  TimeChart& chart = ui().chtTimes;
  connections_ += chart.Zoom.Connect([this](double time, double factor) {
    chart_.Zoom(time, factor);
    ShowChart();
  });
  connections_ += chart.Pan.Connect([this](double seconds) {
    chart_.Pan(seconds);
    ShowChart();
  });
  connections_ += ui().cmdWhole.Click.Connect([this] {
    chart_.ShowWhole();
    ShowChart();
  });
}

void frmRehearsal::ShowChart() {
  TimeChart& chart = ui().chtTimes;
  chart.Show(chart_.Visible(chart.WidthInPoints()), "What the axis does is drawn here over time.");
}

void frmRehearsal::ConnectFindings() {
  constexpr int kSteps[] = {5, 10, 10, 9, 9, 11, 9, 10};
  constexpr int kFindings[] = {4, 10, 5, 8, 40};
  ui().vsSteps.Bind(&stepsGrid_);
  ui().vsFindings.Bind(&findingsGrid_);
  for (int i = 0; i < stepsGrid_.Columns(); ++i) ui().vsSteps.SetColumnWidth(i, kSteps[i]);
  for (int i = 0; i < findingsGrid_.Columns(); ++i) ui().vsFindings.SetColumnWidth(i, kFindings[i]);
  connections_ += ui().vsSteps.RowColChange.Connect([this] { LookAtStep(); });
  connections_ += ui().vsFindings.RowColChange.Connect([this] { LookAtFinding(false); });
  connections_ += ui().vsFindings.RowChosen.Connect([this](int) { LookAtFinding(true); });
  connections_ += ui().vsFindings.Tip.Connect([this](int row, int column, std::string& tip) {
    if (row > 0) tip = findingsGrid_.Text(row, column) + "\rEnter leads to the index table.";
  });
}

void frmRehearsal::LookAtStep() {
  const int row = ui().vsSteps.Row();
  if (row < 1 || row > static_cast<int>(result_.steps.size())) return;
  const RehearsedStep& step = result_.steps[static_cast<std::size_t>(row) - 1];
  chart_.PointAt(step.begin, step.end);
  ShowChart();
  if (!showing_) hooks_.goTo(step.step, false);
}

// Its moment is set off with the step in which it was.
void frmRehearsal::LookAtFinding(bool front) {
  const int row = ui().vsFindings.Row();
  if (row < 1 || row > static_cast<int>(result_.findings.size())) return;
  const RehearsalFinding& finding = result_.findings[static_cast<std::size_t>(row) - 1];
  ui().lblFindings.SetText(finding.words);
  if (finding.step == 0) return;
  const auto step = std::ranges::find_if(result_.steps, [&](const RehearsedStep& each) {
    return each.step == finding.step && each.end >= finding.seconds;
  });
  if (step != result_.steps.end()) chart_.PointAt(step->begin, std::max(step->end, step->begin));
  ShowChart();
  if (!showing_) hooks_.goTo(finding.step, front);
}

// ---- the inputs

void frmRehearsal::ConnectInputs() {
  Grid& grid = ui().vsInputs;
  grid.Bind(&inputsGrid_);
  constexpr int kWidths[] = {14, 12, 6};
  for (int i = 0; i < inputsGrid_.Columns(); ++i) grid.SetColumnWidth(i, kWidths[i]);
  connections_ += grid.ValidateEdit.Connect([](GridEdit& edit) {
    edit.text = std::string(Trim(edit.text));
    edit.hint = InputsGrid::Fault(edit.column, edit.text);
    edit.cancel = !edit.hint.empty();
  });
  connections_ += grid.AfterEdit.Connect([&grid](int row, int column) {
    grid.Refresh();
    grid.SetCurrent(row, column);
  });
  connections_ += ui().cmdDeleteInput.Click.Connect([this, &grid] {
    if (!grid.FinishEdit()) return;
    inputsGrid_.Remove(grid.Row());
    grid.Refresh();
  });
  connections_ += ui().cmdLoadInputs.Click.Connect([this] { LoadInputs(); });
  connections_ += ui().cmdSaveInputs.Click.Connect([this] { SaveInputs(); });
}

void frmRehearsal::LoadInputs() {
  if (!ui().vsInputs.FinishEdit()) return;
  Trapped("Inputs cannot be loaded!\r", [this] {
    const bool replaces = !inputsGrid_.IsEmpty();
    const auto path = world().dialogs->OpenFile({"Load Inputs", kCsvFilter, "csv", "", ""});
    if (!path) return false;
    const std::string text = world().files->ReadAll(*path);
    (void)ReadInputScript(text);
    if (replaces &&
        !AskGraveYesNo("The inputs of the file take the place of those that are in the table.\r"
                       "Do you wish to replace them?")) {
      return false;
    }
    inputsGrid_.Take(text);
    ui().vsInputs.Refresh();
    return true;
  });
}

void frmRehearsal::SaveInputs() {
  if (!ui().vsInputs.FinishEdit()) return;
  (void)SaveAs({"Save Inputs", kCsvFilter, "csv", "", "inputs.csv"}, "Inputs cannot be saved!\r",
               [this] { return inputsGrid_.Csv(); });
}

// ---- files

void frmRehearsal::SaveRecord() {
  (void)SaveAs({"Save Record", kCsvFilter, "csv", "", "rehearsal.csv"},
               "The record cannot be saved!\r", [this] {
                 RehearsalRecord record(units_);
                 for (const RehearsalSample& sample : chart_.Samples()) record.Add(sample);
                 return record.Text();
               });
}

void frmRehearsal::SavePicture() {
  (void)SaveAs({"Save Picture", "Picture (*.png)|*.png", "png", "", "rehearsal.png"},
               "The picture cannot be saved!\r", [this] { return ui().chtTimes.Picture(); });
}

}  // namespace velmoor
