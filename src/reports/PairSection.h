// A section of two columns: what, and how it is.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "reports/SectionReport.h"

namespace velmoor {

class PairSection : public SectionReport {
 public:
  using SectionReport::SectionReport;

 protected:
  [[nodiscard]] std::vector<PrintCell> Fields() const override {
    if (i > static_cast<int>(arTemp.size())) return {};
    const auto& [name, value] = arTemp[static_cast<std::size_t>(i) - 1];
    return {{name}, {value}};
  }

  std::vector<std::pair<std::string, std::string>> arTemp;
};

}  // namespace velmoor
