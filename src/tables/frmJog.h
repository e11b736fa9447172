// The window of the jog table.
#pragma once

#include "tables/LimitWindow.h"

namespace velmoor {

class frmJog final : public LimitWindow {
 public:
  explicit frmJog(MotionTable& jog) : LimitWindow("frmJog", jog, UnitKind::speed, "Jog") {}

 protected:
  [[nodiscard]] std::vector<std::string> Headings(const Project& project) const override {
    return {"Speed (" + project.SpeedUnits() + ")", "JOG0", "JOG1", "JOG2", "JOG3"};
  }
};

}  // namespace velmoor
