#include "tables/frmZone.h"

#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "session/Session.h"
#include "tables/TableCsv.h"
#include "tables/ZoneStrip.h"
#include "tables/clsHX7Zone.h"

namespace velmoor {

frmZone::frmZone(clsHX7Zone& zone)
    : WindowOf(TableWindowInfo{"Zone Table", "Zone", 0}, zone, UnitKind::distance), zone_(zone) {}

std::string frmZone::ExportText() const {
  return ExportCsv(zone_);
}

std::vector<std::string> frmZone::ImportText(const std::string& text) {
  return ImportCsv(OpenedProject(), zone_, text);
}

void frmZone::FormLoad() {
  LimitWindow::FormLoad();
  connections_ += grid().RowColChange.Connect([this] { RowsShown(); });
}

void frmZone::RowsShown() {
  Project& project = OpenedProject();
  std::optional<Travel> limits;
  const auto low = ParseFloat(project.EditorService().GetParameterValue("Pn81C"));
  const auto high = ParseFloat(project.EditorService().GetParameterValue("Pn81B"));
  if (low && high) limits = Travel{*low, *high};
  const std::vector<ZoneSpan> zones = SpansOf(zone_);
  ui().drwStrip.SetShapes(
      kStripWidth, kStripHeight,
      ZoneStrip(zones, limits, project.ProgrammeTravel(), grid().Row() - 1, project.Resolution()));
  ui().lblRemarks.SetText(ZoneRemarks(zones));
  ui().lblRemarks.SetTone(Tone::alarm);
}

bool frmZone::MayCommit() {
  for (int row = 1; row <= zone_.RowsInArray(); ++row) {
    if (zone_.IsDataSetComplete(row)) continue;
    ShowExclamation("Definition in zone " + NumberText(row - 1) +
                    " is incomplete!\rPlease edit definition.");
    return false;
  }
  return true;
}

}  // namespace velmoor
