// Shows a parameter tool's rows in a grid.
//
// The columns are those below. The grid's rows are the tool's, in the tool's order or sorted by a
// column; a sorting changes nothing in the tool. Edits land in the tool's rows at once.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/Grid.h"
#include "tools/ParameterToolBase.h"

namespace velmoor {

class ParameterGrid final : public GridSource {
 public:
  static constexpr int kCategory = 0;
  static constexpr int kParameter = 1;
  static constexpr int kDescription = 2;
  static constexpr int kValue = 3;
  static constexpr int kUnit = 4;
  static constexpr int kDefault = 5;
  static constexpr int kRange = 6;
  static constexpr int kNotes = 7;  // what marks and digits mean, in words

  // The tool must outlive the grid.
  explicit ParameterGrid(ParameterToolBase& tool) : tool_(tool) {}

  // Sorts by the texts of a column, those of equal texts in the tool's order.
  void SortBy(int column, bool descending);
  // Between a row of the grid, the heading being 0, and the tool's; the same until a sorting. A
  // number below 1 stays as it is.
  [[nodiscard]] int ToolRow(int gridRow) const;
  [[nodiscard]] int GridRow(int toolRow) const;

  // Keeps the user out of a row of the tool, and why; an empty reason opens it.
  void SetLocked(int toolRow, const std::string& reason);
  // Empty for an open row.
  [[nodiscard]] std::string LockedBecause(int toolRow) const;
  // What the row's value may be; empty for a list.
  [[nodiscard]] std::string RangeText(int toolRow) const;

  [[nodiscard]] int Rows() const override { return tool_.RowsInArray() + 1; }
  [[nodiscard]] int Columns() const override { return kNotes + 1; }
  [[nodiscard]] std::string Text(int row, int column) const override;
  void SetText(int row, int column, const std::string& text) override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;

 private:
  [[nodiscard]] std::string ToolText(int toolRow, int column) const;
  [[nodiscard]] std::string NotesOf(int toolRow) const;
  [[nodiscard]] int DecimalsOf(int toolRow) const;

  ParameterToolBase& tool_;
  std::map<int, std::string> locked_;
  std::vector<int> order_;  // the tool's rows as the grid shows them; empty: as they lie
};

}  // namespace velmoor
