// Shows what a change of the machine makes of every value, before it is committed.
#pragma once

#include <string>
#include <vector>

#include "layouts/frmRescalePreview.h"
#include "mechanics/MachineDescription.h"
#include "platform/Grid.h"
#include "session/Project.h"
#include "windows/Dialog.h"

namespace velmoor {

class RescalePreview final : public WindowOf<layouts::frmRescalePreview, Dialog>,
                             private ReadOnlyGridSource {
 public:
  // Before a change of the machine changes values the user sees what becomes of each. True: go on.
  [[nodiscard]] static bool AskFor(const MachineChange& change);

  explicit RescalePreview(const MachineConsequences& consequences)
      : consequences_(consequences), values_(consequences.values) {}

 protected:
  void FormLoad() override;

 private:
  [[nodiscard]] int Rows() const override { return static_cast<int>(values_.size()) + 1; }
  [[nodiscard]] int Columns() const override { return 6; }
  [[nodiscard]] std::string Text(int row, int column) const override;
  [[nodiscard]] std::string Summary() const;

  const MachineConsequences& consequences_;
  const std::vector<RescaledValue>& values_;
};

}  // namespace velmoor
