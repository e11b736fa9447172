// The tables of the rehearsal's window: the steps with their times, what went wrong, and what
// happens at the inputs.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Csv.h"
#include "platform/Grid.h"
#include "rehearsal/Rehearsal.h"

namespace velmoor {

// Lengths of time in s, distances in the programme's units.
[[nodiscard]] CsvRow StepHeadings();
[[nodiscard]] std::vector<CsvRow> StepRows(const RehearsalResult& result,
                                           const RehearsedProgramme& programme);
[[nodiscard]] CsvRow FindingHeadings();
// Numbered from 1, as the marks of the chart are.
[[nodiscard]] std::vector<CsvRow> FindingRows(const RehearsalResult& result);

// A scripted input a row, as the user types it, and below them an empty one that takes another.
class InputsGrid final : public GridSource {
 public:
  enum Column { at = 0, input, state };

  [[nodiscard]] int Rows() const override { return static_cast<int>(rows_.size()) + 2; }
  [[nodiscard]] int Columns() const override { return 3; }
  [[nodiscard]] std::string Text(int row, int column) const override;
  // Into the empty row: there is one more then, with "on" for its state.
  void SetText(int row, int column, const std::string& text) override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;

  // Why the text cannot stand in that column; empty: it can.
  [[nodiscard]] static std::string Fault(int column, const std::string& text);
  void Remove(int row);
  [[nodiscard]] bool IsEmpty() const { return rows_.empty(); }
  // As a file has them, with the heading.
  [[nodiscard]] std::string Csv() const;
  // In the place of what is there. Throws InputScriptError, and nothing is changed then.
  void Take(const std::string& csv);

 private:
  std::vector<CsvRow> rows_;
};

}  // namespace velmoor
