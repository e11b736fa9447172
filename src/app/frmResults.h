// A table of what became of something, to be read and closed: the refusals of a text, the results
// of a run over a line. It blocks while it is open.
#pragma once

#include <string>
#include <vector>

#include "layouts/frmResults.h"
#include "platform/Csv.h"
#include "windows/Window.h"

namespace velmoor {

class frmResults final : public WindowOf<layouts::frmResults>, private ReadOnlyGridSource {
 public:
  struct Contents {
    std::string caption;
    std::string summary;
    std::vector<CsvRow> rows;      // the first names the columns; as many cells in each
    std::vector<int> widths;       // of the columns, in characters
    std::vector<Tone> tones = {};  // of the rows behind the first; none: plain
    int tonedColumn = 0;
  };

  explicit frmResults(Contents contents) : contents_(std::move(contents)) {}

 protected:
  void FormLoad() override;

 private:
  [[nodiscard]] int Rows() const override { return static_cast<int>(contents_.rows.size()); }
  [[nodiscard]] int Columns() const override {
    return static_cast<int>(contents_.rows.front().size());
  }
  [[nodiscard]] std::string Text(int row, int column) const override {
    return contents_.rows.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
  }
  [[nodiscard]] CellTraits Traits(int row, int column) const override;

  Contents contents_;
};

}  // namespace velmoor
