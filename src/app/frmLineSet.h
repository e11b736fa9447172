// The dialog in which parameters are named, with the values that all chosen axes of a line are to
// get.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "layouts/frmLineSet.h"
#include "platform/Grid.h"
#include "windows/Dialog.h"

namespace velmoor {

class frmLineSet final : public WindowOf<layouts::frmLineSet, Dialog>, private GridSource {
 public:
  // `axes` names whom it is for.
  explicit frmLineSet(std::string axes) : axes_(std::move(axes)) {}
  // "Pn100=60" and so on, once Ask has told of agreement.
  [[nodiscard]] const std::vector<std::string>& Assignments() const { return assignments_; }

 protected:
  void FormLoad() override;
  bool TakeResult() override;

 private:
  static constexpr int kMost = 12;
  [[nodiscard]] int Rows() const override { return kMost + 1; }
  [[nodiscard]] int Columns() const override { return 2; }
  [[nodiscard]] std::string Text(int row, int column) const override;
  void SetText(int row, int column, const std::string& text) override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;

  std::string axes_;
  std::array<std::array<std::string, 2>, kMost> cells_{};
  std::vector<std::string> assignments_;
};

}  // namespace velmoor
