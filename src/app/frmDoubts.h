// The window with the values in doubt: what each shows and what would be sent, and the choice which
// of the two stays. It blocks while it is open, and closes by itself when none is left.
#pragma once

#include <string>
#include <vector>

#include "layouts/frmDoubts.h"
#include "project/clsHX7Project.h"
#include "windows/Window.h"

namespace velmoor {

class frmDoubts final : public WindowOf<layouts::frmDoubts>, private ReadOnlyGridSource {
 public:
  // `project` must outlive the object.
  explicit frmDoubts(clsHX7Project& project) : project_(project), rows_(project.Doubts()) {}
  // Returns when the window has closed; at once where no value is in doubt.
  void ShowIfAny();

 protected:
  void FormLoad() override;

 private:
  [[nodiscard]] int Rows() const override { return static_cast<int>(rows_.size()) + 1; }
  [[nodiscard]] int Columns() const override;
  [[nodiscard]] std::string Text(int row, int column) const override;

  void ShowRows();
  void OfferChoices() const;
  // The rows that are selected.
  [[nodiscard]] std::vector<Doubt> Chosen() const;
  void Settle(Keep keep);

  clsHX7Project& project_;
  std::vector<Doubt> rows_;
};

}  // namespace velmoor
