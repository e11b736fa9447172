// The window of the jog table.
#pragma once

#include "layouts/frmJog.h"
#include "tables/LimitWindow.h"

namespace velmoor {

class clsHX7Jog;

class frmJog final : public WindowOf<layouts::frmJog, LimitWindow> {
 public:
  explicit frmJog(clsHX7Jog& jog);

 protected:
  [[nodiscard]] std::string ExportText() const override;
  [[nodiscard]] std::vector<std::string> ImportText(const std::string& text) override;

 private:
  clsHX7Jog& jog_;
};

}  // namespace velmoor
