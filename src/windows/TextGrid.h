// A table of texts for a grid, made at once.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Csv.h"
#include "platform/Grid.h"

namespace velmoor {

class TextGrid : public ReadOnlyGridSource {
 public:
  explicit TextGrid(CsvRow headings) : rows_{std::move(headings)} {}
  // Behind the headings, as many cells in each.
  void SetRows(const std::vector<CsvRow>& rows) {
    rows_.resize(1);
    rows_.insert(rows_.end(), rows.begin(), rows.end());
  }
  // With the headings as the first row. Where the number of columns is another one, a grid has to
  // be bound again.
  void SetTable(std::vector<CsvRow> rows) { rows_ = std::move(rows); }
  [[nodiscard]] const std::vector<CsvRow>& Table() const { return rows_; }
  [[nodiscard]] int Rows() const override { return static_cast<int>(rows_.size()); }
  [[nodiscard]] int Columns() const override { return static_cast<int>(rows_.front().size()); }
  [[nodiscard]] std::string Text(int row, int column) const override {
    return rows_.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
  }

 private:
  std::vector<CsvRow> rows_;  // the first one: headings
};

}  // namespace velmoor
