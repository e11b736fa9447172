// How the program and the amplifier talk to each other: four fixed lines.
#pragma once

#include "reports/PairSection.h"

namespace velmoor {

class rptHX7Communications final : public PairSection {
 public:
  using PairSection::PairSection;

 protected:
  void ActiveReport_ReportStart() override;
};

}  // namespace velmoor
