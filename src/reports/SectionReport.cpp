#include "reports/SectionReport.h"

#include <utility>

#include "session/Session.h"

namespace velmoor {

std::string ReportFont(std::int32_t eLanguage) {
  if (eLanguage == 1) return "Symbol";
  return eLanguage == 2 ? "Arial" : "";
}

PrintSection SectionReport::Run() {
  section_ = {};
  i = 1;
  section_.font = ReportFont(gMainForm->Language());
  ActiveReport_ReportStart();
  GroupHeader1_Format();
  while (Detail_Format()) {
  }
  return std::move(section_);
}

bool SectionReport::Detail_Format() {
  std::vector<PrintCell> fields = Fields();
  if (fields.empty()) return false;
  section_.rows.push_back(std::move(fields));
  ++i;
  return true;
}

}  // namespace velmoor
