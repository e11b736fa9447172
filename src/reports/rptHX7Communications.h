// How the program and the amplifier talk to each other: four fixed lines.
#pragma once

#include <array>
#include <vector>

#include "reports/SectionReport.h"

namespace velmoor {

class rptHX7Communications final : public SectionReport {
 public:
  using SectionReport::SectionReport;

 protected:
  void ActiveReport_ReportStart() override;
  [[nodiscard]] std::vector<PrintCell> Fields() const override;

 private:
  std::vector<std::array<std::string, 2>> arTemp;
};

}  // namespace velmoor
