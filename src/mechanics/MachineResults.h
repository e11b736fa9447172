// What follows from the description of a machine, as a table.
#pragma once

#include <string>
#include <vector>

#include "mechanics/MachineEdit.h"
#include "platform/Grid.h"

namespace velmoor {

class MachineResults final : public ReadOnlyGridSource {
 public:
  // The figures of a machine that cannot be set are left out where they do not hold.
  void Take(const MachineFigures& figures, const MachineDescription& description);

  [[nodiscard]] int Rows() const override { return static_cast<int>(rows_.size()) + 1; }
  [[nodiscard]] int Columns() const override { return 3; }
  [[nodiscard]] std::string Text(int row, int column) const override;

 private:
  struct Row {
    std::string name, value, unit;
  };
  std::vector<Row> rows_;
};

}  // namespace velmoor
