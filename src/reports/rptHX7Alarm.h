// The section of the latest alarm that was recorded: what it was, how the axis stood, and what the
// minute before it shows.
#pragma once

#include "reports/PairSection.h"

namespace velmoor {

class rptHX7Alarm final : public PairSection {
 public:
  using PairSection::PairSection;

 protected:
  void ActiveReport_ReportStart() override;
};

}  // namespace velmoor
