// Maps the input and output signals of the option card to functions.
#pragma once

#include "tools/ParameterToolBase.h"

namespace velmoor {

class clsHX7FlexibleIO final : public ParameterToolBase {
 public:
  clsHX7FlexibleIO() : ParameterToolBase("clsFlexibleIO") {}

  // Sends the dirty rows.
  bool Download() { return DownloadRows(false); }

 protected:
  [[nodiscard]] bool Takes(const ParameterDefinition& definition) const override;
  void AfterUpload() override { UpdateOtherBlockMatrices(); }

 private:
  void UpdateOverTravelBlockMatrix() const;
  void UpdateOtherBlockMatrices();
};

}  // namespace velmoor
