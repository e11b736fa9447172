#include "tables/clsHX7Zone.h"

#include <array>
#include <memory>

#include "link/clsHX7Helix7.h"
#include "platform/Numbers.h"
#include "project/data/Schema.h"
#include "project/data/UnitConversion.h"
#include "session/Session.h"
#include "tables/frmZone.h"

namespace velmoor {

using schema::Zone;

namespace {

constexpr std::array<TableColumn, 7> kColumns{{
    {Zone::kLowerLimit, Zone::kControllerLowerLimit, CellKind::distance},
    {Zone::kUpperLimit, Zone::kControllerUpperLimit, CellKind::distance},
    {Zone::kBit[0], {}, CellKind::fixed},
    {Zone::kBit[1], {}, CellKind::fixed},
    {Zone::kBit[2], {}, CellKind::fixed},
    {Zone::kBit[3], {}, CellKind::fixed},
    {Zone::kBit[4], {}, CellKind::fixed},
}};

constexpr TableLayout kLayout{
    Tool::zone, "clsZone", Zone::kTable, Zone::kZone, static_cast<int>(Zone::kRows), kColumns};

}  // namespace

clsHX7Zone::clsHX7Zone() : MotionTable(kLayout) {
  TakeWindow(std::make_unique<frmZone>(*this));
}

bool clsHX7Zone::IsDataSetComplete(int row) const {
  return Text(row, lower).empty() == Text(row, upper).empty();
}

ResultCode clsHX7Zone::UploadRow(int row, std::vector<std::string>& controller) {
  ZoneRow limits;
  const ResultCode result =
      gMainForm->Helix7()->readZoneTable(Narrow<std::int16_t>(row - 1), limits);
  if (result != kSuccess) return result;
  controller[lower] = PlainCount(limits[lower]);
  controller[upper] = PlainCount(limits[upper]);
  return kSuccess;
}

ResultCode clsHX7Zone::SendRow(int row, const std::vector<std::string>& controller) {
  const ZoneRow limits{controller[lower], controller[upper]};
  return gMainForm->Helix7()->writeZoneTable(Narrow<std::int16_t>(row - 1), limits);
}

}  // namespace velmoor
