#include "rehearsal/RehearsalGrids.h"

#include <algorithm>

#include "platform/Numbers.h"
#include "tables/clsHX7Position.h"

namespace velmoor {
namespace {

const CsvRow& InputHeadings() {
  static const CsvRow kHeadings{"at", "input", "state"};
  return kHeadings;
}

std::string Seconds(double seconds) {
  return FixedText(seconds, 3);
}

}  // namespace

CsvRow StepHeadings() {
  return {"Step", "Label", "Begins (s)", "Takes (s)", "Move (s)", "Ends at", "Error", "Torque (%)"};
}

std::vector<CsvRow> StepRows(const RehearsalResult& result, const RehearsedProgramme& programme) {
  std::vector<CsvRow> rows;
  const Units& units = programme.InUnits();
  for (const RehearsedStep& step : result.steps) {
    rows.push_back({NumberText(step.step), programme.Text(step.step, clsHX7Position::label),
                    Seconds(step.begin), Seconds(step.end - step.begin), Seconds(step.moved),
                    units.Shown(step.endPosition, UnitKind::distance),
                    units.Shown(step.largestError, UnitKind::distance),
                    NumberText(step.peakTorque)});
  }
  return rows;
}

CsvRow FindingHeadings() {
  return {"No.", "Kind", "Step", "At (s)", "What"};
}

std::vector<CsvRow> FindingRows(const RehearsalResult& result) {
  std::vector<CsvRow> rows;
  for (const RehearsalFinding& finding : result.findings) {
    const bool whole = finding.step == 0;
    rows.push_back({NumberText(rows.size() + 1), std::string(WordOf(finding.kind)),
                    whole ? "" : NumberText(finding.step), whole ? "" : Seconds(finding.seconds),
                    finding.words});
  }
  return rows;
}

// ---- inputs

std::string InputsGrid::Text(int row, int column) const {
  constexpr const char* kHeadings[] = {"At (s, or step)", "Input", "State"};
  if (row == 0) return kHeadings[column];
  const auto place = static_cast<std::size_t>(row) - 1;
  return place < rows_.size() ? rows_[place].at(static_cast<std::size_t>(column)) : std::string();
}

void InputsGrid::SetText(int row, int column, const std::string& text) {
  const auto place = static_cast<std::size_t>(row) - 1;
  if (place >= rows_.size()) {
    if (text.empty()) return;
    rows_.push_back({"", "", "on"});
  }
  rows_[place].at(static_cast<std::size_t>(column)) = column == input ? UpperCase(text) : text;
}

CellTraits InputsGrid::Traits(int row, int column) const {
  CellTraits traits;
  traits.editable = row > 0;
  if (column == input) traits.comboItems = InputNames();
  if (column == state) traits.comboItems = {"on", "off"};
  return traits;
}

std::string InputsGrid::Fault(int column, const std::string& text) {
  if (text.empty()) return {};
  CsvRow row{"0", "SEL0", "on"};
  row.at(static_cast<std::size_t>(column)) = text;
  try {
    (void)ReadInputScript(CsvLine(InputHeadings()) + CsvLine(row));
    return {};
  } catch (const InputScriptError& error) {
    const std::string words = error.what();
    constexpr std::string_view kPlace = "Row 1: ";
    return words.starts_with(kPlace) ? words.substr(kPlace.size()) : words;
  }
}

void InputsGrid::Remove(int row) {
  const auto place = static_cast<std::ptrdiff_t>(row) - 1;
  if (place < 0 || place >= static_cast<std::ptrdiff_t>(rows_.size())) return;
  rows_.erase(rows_.begin() + place);
}

std::string InputsGrid::Csv() const {
  std::string text = CsvLine(InputHeadings());
  for (const CsvRow& row : rows_) text += CsvLine(row);
  return text;
}

void InputsGrid::Take(const std::string& csv) {
  std::vector<CsvRow> rows;
  for (const ScriptedInput& entry : ReadInputScript(csv)) {
    rows.push_back({entry.step ? "step " + NumberText(*entry.step) : NumberText(*entry.seconds),
                    entry.input, entry.on ? "on" : "off"});
  }
  rows_ = std::move(rows);
}

}  // namespace velmoor
