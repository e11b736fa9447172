// The section of the latest alarm that was recorded: what it was, how the axis stood, and what the
// minute before it shows.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "reports/SectionReport.h"

namespace velmoor {

class rptHX7Alarm final : public SectionReport {
 public:
  using SectionReport::SectionReport;

 protected:
  void ActiveReport_ReportStart() override;
  [[nodiscard]] std::vector<PrintCell> Fields() const override;

 private:
  std::vector<std::pair<std::string, std::string>> arTemp;
};

}  // namespace velmoor
