// Maps the input and output signals of the option card to functions.
#pragma once

#include "tools/ParameterToolBase.h"
#include "tools/frmProperties.h"

namespace velmoor {

class clsHX7FlexibleIO final : public ParameterToolBase {
 public:
  clsHX7FlexibleIO();

  bool Show_FlexibleIO() { return ShowWindow("Flexible I/O Configuration", FormMode::modeless); }
  void Unload_FlexibleIO() { UnloadWindow(); }

  // Sends the dirty rows.
  bool Download() { return DownloadRows(false); }

 protected:
  [[nodiscard]] bool Takes(const ParameterDefinition& definition) const override;
  void AfterUpload() override { UpdateOtherBlockMatrices(); }

 private:
  void UpdateOverTravelBlockMatrix() const;
  void UpdateOtherBlockMatrices();
  void frm_PropertiesOverTravelChanged();

  frmProperties frm_{*this, "FlexibleIO"};
  Connection overTravelChanged_;
};

}  // namespace velmoor
