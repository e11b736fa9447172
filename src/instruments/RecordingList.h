// The recordings of a project as a grid lists them: shown or not, with names and notes that are
// changed in their cells.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Grid.h"
#include "recordings/RecordingFolder.h"

namespace velmoor {

class RecordingList final : public GridSource {
 public:
  enum Column { show, name, began, note };
  struct Row {
    std::string name;
    RecordingHeading heading;  // empty where the file cannot be read
    std::string fault;
    bool shown = false;
  };

  // Reads the folder anew; what was shown stays so. Nothing: no project is open.
  void Read(std::optional<RecordingFolder> folder);
  // Shows that one alone. Gives its row in the grid; 0: there is none of that name.
  int ShowOnly(const std::string& which);
  // False: it cannot be read.
  bool Toggle(int row);
  // In the order of time, as their names have it. What cannot be read is told in a box, and is not
  // shown any more.
  [[nodiscard]] std::vector<std::pair<std::string, Recording>> TakeShown();
  // Null: the grid has no such row.
  [[nodiscard]] const Row* At(int row) const;
  // 0: there is none of that name.
  [[nodiscard]] int RowOf(const std::string& which) const;
  [[nodiscard]] const std::optional<RecordingFolder>& Folder() const { return folder_; }
  // Of that row, "What" and "As it was" first.
  [[nodiscard]] std::vector<std::vector<std::string>> Details(int row) const;
  // Empty: the row may have that name. Else why not.
  [[nodiscard]] std::string WhyNot(int row, const std::string& next) const;

  [[nodiscard]] int Rows() const override { return static_cast<int>(rows_.size()) + 1; }
  [[nodiscard]] int Columns() const override { return 4; }
  [[nodiscard]] std::string Text(int row, int column) const override;
  // Changes the file; failures are told in a box.
  void SetText(int row, int column, const std::string& text) override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;

 private:
  std::optional<RecordingFolder> folder_;
  std::vector<Row> rows_;
};

}  // namespace velmoor
