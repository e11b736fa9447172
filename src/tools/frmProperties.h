// The one window of the interface, flexible I/O, over-travel and homing tools.
#pragma once

#include <string>

#include "layouts/frmProperties.h"
#include "tools/ParameterGridWindow.h"

namespace velmoor {

class frmProperties final : public WindowOf<layouts::frmProperties, ParameterGridWindow> {
 public:
  // `formType` is "Interface", "FlexibleIO", "OverTravel" or "Homing".
  frmProperties(ParameterToolBase& tool, std::string formType);

  [[nodiscard]] const std::string& FormType() const { return strFormType_; }
  // Locks the rows that the homing method of that text does not use; another text changes nothing.
  void UpdateHomingGrid(const std::string& strMode);
  // Hides the inputs that an older option card does not have, while it is connected.
  void UpdateFlexibleIOGrid();
  void StoreChanged() override;

  // Pn80C or Pn80D was edited, and how; before any Apply.
  Event<const std::string&, const std::string&> PropertiesOverTravelChanged;

 protected:
  void FormLoad() override;
  void CurrentRowChanged(int row) override;
  void AfterEdit(int row) override;

 private:
  [[nodiscard]] bool IsType(const char* lowerCase) const;
  [[nodiscard]] std::string GetPnValueFromGrid(const std::string& strPn);
  void vsFG_ChangeEdit(const GridEdit& edit);
  void ShowHomingMethod();

  std::string strFormType_;
};

}  // namespace velmoor
