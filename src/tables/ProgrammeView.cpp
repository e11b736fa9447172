#include "tables/ProgrammeView.h"

#include <algorithm>

#include "platform/Numbers.h"
#include "tables/clsHX7Position.h"

namespace velmoor {

// The path as rows: order, step, move, and how the step goes on.
class ProgrammeView::PathGrid final : public ReadOnlyGridSource {
 public:
  PathGrid(const clsHX7Position& table, const ProgrammePath& path) : table_(table), path_(path) {}

  [[nodiscard]] int Rows() const override { return static_cast<int>(path_.steps.size()) + 1; }
  [[nodiscard]] int Columns() const override { return 4; }
  [[nodiscard]] std::string Text(int row, int column) const override {
    static constexpr const char* kHeadings[] = {"Step", "Label", "Move", "Then"};
    if (row == 0) return kHeadings[column];
    const int step = StepAt(row);
    if (column == 0) return NumberText(step);
    if (column == 1) return table_.Text(step, clsHX7Position::label);
    return column == 2 ? MoveOf(step) : ThenOf(step);
  }

  [[nodiscard]] int StepAt(int row) const {
    return path_.steps.at(static_cast<std::size_t>(row) - 1);
  }

 private:
  [[nodiscard]] std::string MoveOf(int step) const {
    const std::string& loops = table_.Text(step, clsHX7Position::loop);
    const std::string& move = table_.Text(step, clsHX7Position::position);
    return loops == "1" ? move : move + " x " + loops;
  }
  [[nodiscard]] std::string ThenOf(int step) const {
    const std::string& event = table_.Text(step, clsHX7Position::event);
    const std::string& next = table_.Text(step, clsHX7Position::next);
    std::string words;
    if (WaitsForInput(event)) words = "on " + EventWord(event) + ", ";
    if (EventTime(event) > 0) words += NumberText(EventTime(event)) + " ms, ";
    return words + (next == "END" ? "end" : "to " + next);
  }

  const clsHX7Position& table_;
  const ProgrammePath& path_;
};

ProgrammeView::ProgrammeView(const clsHX7Position& table)
    : table_(table), rows_(std::make_unique<PathGrid>(table, path_)) {}

ProgrammeView::~ProgrammeView() = default;

void ProgrammeView::Bind(Form& form, const layouts::frmPosition& ui,
                         std::function<void(int step)> goTo) {
  ui_ = &ui;
  connections_.Clear();
  path_ = ProgrammePath{};
  connections_ += form.Unloaded.Connect([this] { ui_ = nullptr; });
  connections_ += ui.cmbStart.Click.Connect([this] {
    start_ = ui_->cmbStart.ListIndex() + 1;
    ShowPath();
  });
  Grid& grid = ui.vsPath;
  grid.Bind(rows_.get());
  connections_ += grid.RowColChange.Connect([this, goTo = std::move(goTo)] {
    const int row = ui_->vsPath.Row();
    if (row < 1) return;
    goTo(rows_->StepAt(row));
    Select(rows_->StepAt(row));
  });
  ShowStartChoices();
}

void ProgrammeView::Refresh(const Project& project) {
  if (ui_ == nullptr) return;
  FillMotionParameters(project);
  ShowStartChoices();
  ShowPath();
}

void ProgrammeView::Select(int step) {
  if (ui_ == nullptr || step == selected_) return;
  selected_ = step;
  ShowChart();
}

void ProgrammeView::FillMotionParameters(const Project& project) {
  // The projects of some programs have no editor; the picture then has steps of speed.
  const double seconds = 60 / project.ConversionForTime();
  const auto read = [&](const char* pn) {
    const std::string text = const_cast<Project&>(project).EditorService().GetParameterValue(pn);
    return ParseFloat(text).value_or(0) / (seconds * seconds);
  };
  distanceUnits_ = project.DistanceUnits();
  parameters_ = {read("Pn81F"), read("Pn820"), seconds};
}

void ProgrammeView::ShowStartChoices() {
  std::vector<std::string> items;
  for (int row = 1; row <= table_.RowsInArray(); ++row) {
    const std::string& label = table_.Text(row, clsHX7Position::label);
    items.push_back(NumberText(row) + (label.empty() ? "" : "  " + label));
  }
  ComboBox& combo = ui_->cmbStart;
  if (combo.Items() != items) combo.SetItems(items);
  combo.SetListIndex(start_ - 1);
}

void ProgrammeView::ShowPath() {
  path_ = FollowProgramme(table_, start_);
  plot_ = PlotMotion(table_, path_, parameters_);
  ui_->vsPath.Refresh();
  const std::string unreachable = DescribeUnreachable(path_);
  Label& words = ui_->lblPath;
  words.SetText(DescribeEnd(table_, path_) + (unreachable.empty() ? "" : "\r" + unreachable));
  const bool fine = path_.end == PathEnd::finished ||
                    (path_.end == PathEnd::repeats && !path_.loopsWithoutEvent) ||
                    (path_.end == PathEnd::incomplete && table_.IsBlank(path_.endStep));
  words.SetTone(fine ? Tone::normal : Tone::alarm);
  ShowChart();
}

// What the mark at a step's begin says.
std::string ProgrammeView::MarkOf(int step) const {
  const std::string& label = table_.Text(step, clsHX7Position::label);
  return label.empty() ? NumberText(step) : label;
}

void ProgrammeView::ShowChart() {
  ChartData data;
  data.xTitle = plot_.shortened ? "Time (s), repetitions shortened" : "Time (s)";
  data.yTitle = "Position (" + distanceUnits_ + ")";
  for (const PlotPoint& point : plot_.points) data.line.push_back({point.time, point.position});
  for (const PlotStep& step : plot_.steps) {
    data.marks.push_back({step.from, MarkOf(step.step)});
    if (step.step != selected_) continue;
    data.shadeFrom = step.from;
    data.shadeTo = step.to;
  }
  ui_->chtMotion.Show(data, "No motion from this step on");
}

}  // namespace velmoor
