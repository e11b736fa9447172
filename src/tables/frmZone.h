// The window of the zone table.
#pragma once

#include "tables/LimitWindow.h"

namespace velmoor {

class frmZone final : public LimitWindow {
 public:
  explicit frmZone(MotionTable& zone) : LimitWindow("frmZone", zone, UnitKind::distance, "Zone") {}

 protected:
  [[nodiscard]] std::vector<std::string> Headings(const Project& project) const override {
    return {"Lower (" + project.DistanceUnits() + ")",
            "Upper (" + project.DistanceUnits() + ")",
            "POUT0",
            "POUT1",
            "POUT2",
            "POUT3",
            "POUT4"};
  }
};

}  // namespace velmoor
