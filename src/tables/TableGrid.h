// Shows a motion table in a grid: the row's number, its cells, and its bits as lamps.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/Grid.h"
#include "tables/MotionTable.h"

namespace velmoor {

class TableGrid final : public GridSource {
 public:
  // Grid column 0 is the row's number, counted from `firstNumber`; grid column n + 1 shows the
  // table's column n. An edit goes into the table's cell at once and marks its row.
  TableGrid(MotionTable& table, std::string numberHeading, int firstNumber)
      : table_(table), numberHeading_(std::move(numberHeading)), firstNumber_(firstNumber) {}

  // One heading for each column of the table.
  void SetHeadings(std::vector<std::string> headings) { headings_ = std::move(headings); }
  // Further traits of a cell, such as a list or a button; row from 1, column of the table from 0.
  void SetTraitsOf(std::function<void(int row, int column, CellTraits& traits)> traits) {
    traitsOf_ = std::move(traits);
  }

  [[nodiscard]] int Rows() const override { return table_.RowsInArray() + 1; }
  [[nodiscard]] int Columns() const override {
    return static_cast<int>(table_.Layout().columns.size()) + 1;
  }
  [[nodiscard]] std::string Text(int row, int column) const override;
  void SetText(int row, int column, const std::string& text) override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;

 private:
  [[nodiscard]] bool IsBit(int column) const;
  [[nodiscard]] static int DecimalsOf(const TableColumn& column);

  MotionTable& table_;
  std::string numberHeading_;
  int firstNumber_;
  std::vector<std::string> headings_;
  std::function<void(int, int, CellTraits&)> traitsOf_;
};

}  // namespace velmoor
