#include "tables/frmJog.h"

#include "session/Session.h"
#include "tables/TableCsv.h"
#include "tables/clsHX7Jog.h"

namespace velmoor {

frmJog::frmJog(clsHX7Jog& jog)
    : WindowOf(TableWindowInfo{"Jog Table", "Jog", 0}, jog, UnitKind::speed), jog_(jog) {}

std::string frmJog::ExportText() const {
  return ExportCsv(jog_);
}

std::vector<std::string> frmJog::ImportText(const std::string& text) {
  return ImportCsv(OpenedProject(), jog_, text);
}

}  // namespace velmoor
