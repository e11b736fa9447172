// The window that shows where the hardware differs from the project: changed rows only, tool by
// tool. It changes nothing and blocks while it is open.
#pragma once

#include <string>
#include <vector>

#include "layouts/frmCompare.h"
#include "project/ProjectCompare.h"
#include "windows/Window.h"

namespace velmoor {

// Whose values stand in the two columns.
struct CompareHeads {
  std::string caption = "Project and Hardware";
  std::string first = "Project";
  std::string second = "Hardware";
};

class frmCompare final : public WindowOf<layouts::frmCompare>, private ReadOnlyGridSource {
 public:
  explicit frmCompare(const std::vector<PartComparison>& parts, CompareHeads heads = {});

 protected:
  void FormLoad() override;

 private:
  [[nodiscard]] int Rows() const override { return static_cast<int>(rows_.size()) + 1; }
  [[nodiscard]] int Columns() const override;
  [[nodiscard]] std::string Text(int row, int column) const override;

  std::vector<ProjectDifference> rows_;
  std::string strSummary_;
  CompareHeads heads_;
};

}  // namespace velmoor
