// Shows a parameter tool's rows in a grid.
//
// Grid row r is the tool's row r; the columns are those below. Edits land in the tool's rows at
// once.
#pragma once

#include <map>
#include <string>

#include "platform/Grid.h"
#include "tools/ParameterToolBase.h"

namespace velmoor {

class ParameterGrid final : public GridSource {
 public:
  static constexpr int kCategory = 0;
  static constexpr int kParameter = 1;
  static constexpr int kDescription = 2;
  static constexpr int kValue = 3;

  // The tool must outlive the grid.
  explicit ParameterGrid(ParameterToolBase& tool) : tool_(tool) {}

  // Keeps the user out of a row, and why; an empty reason opens it.
  void SetLocked(int row, const std::string& reason);
  // Empty for an open row.
  [[nodiscard]] std::string LockedBecause(int row) const;

  [[nodiscard]] int Rows() const override { return tool_.RowsInArray() + 1; }
  [[nodiscard]] int Columns() const override { return kValue + 1; }
  [[nodiscard]] std::string Text(int row, int column) const override;
  void SetText(int row, int column, const std::string& text) override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;

 private:
  ParameterToolBase& tool_;
  std::map<int, std::string> locked_;
};

}  // namespace velmoor
