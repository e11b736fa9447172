// The window of the zone table.
#pragma once

#include "layouts/frmZone.h"
#include "tables/LimitWindow.h"

namespace velmoor {

class clsHX7Zone;

class frmZone final : public WindowOf<layouts::frmZone, LimitWindow> {
 public:
  explicit frmZone(clsHX7Zone& zone);

 protected:
  [[nodiscard]] std::string ExportText() const override;
  [[nodiscard]] std::vector<std::string> ImportText(const std::string& text) override;
  void FormLoad() override;
  void RowsShown() override;
  // A zone with one limit only would be stored empty: it is told of, and refused.
  bool MayCommit() override;

 private:
  clsHX7Zone& zone_;
};

}  // namespace velmoor
