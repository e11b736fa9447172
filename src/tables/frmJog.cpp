#include "tables/frmJog.h"

#include "session/Session.h"
#include "tables/TableCsv.h"
#include "tables/clsHX7Jog.h"

namespace velmoor {

frmJog::frmJog(clsHX7Jog& jog)
    : LimitWindow({"frmJog", "Jog Table", "Jog", 0}, jog, UnitKind::speed), jog_(jog) {}

std::vector<std::string> frmJog::Headings(const Project& project) const {
  return {"Speed (" + project.SpeedUnits() + ")", "JOG0", "JOG1", "JOG2", "JOG3"};
}

std::string frmJog::ExportText() const {
  return ExportCsv(jog_);
}

std::vector<std::string> frmJog::ImportText(const std::string& text) {
  return ImportCsv(OpenedProject(), jog_, text);
}

}  // namespace velmoor
