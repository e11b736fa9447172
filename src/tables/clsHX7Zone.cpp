#include "tables/clsHX7Zone.h"

#include <algorithm>
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
    {Zone::kLowerLimit, Zone::kControllerLowerLimit, CellKind::distance, "Lower", "lower",
     "Lower Limit (", "The zone begins here; empty with the upper one: no such zone"},
    {Zone::kUpperLimit, Zone::kControllerUpperLimit, CellKind::distance, "Upper", "upper",
     "Upper Limit (", "The zone ends here"},
    {Zone::kBit[0], {}, CellKind::fixed, "POUT0", {}, {}, "Set while the axis is in the zone"},
    {Zone::kBit[1], {}, CellKind::fixed, "POUT1", {}, {}, "Set while the axis is in the zone"},
    {Zone::kBit[2], {}, CellKind::fixed, "POUT2", {}, {}, "Set while the axis is in the zone"},
    {Zone::kBit[3], {}, CellKind::fixed, "POUT3", {}, {}, "Set while the axis is in the zone"},
    {Zone::kBit[4], {}, CellKind::fixed, "POUT4", {}, {}, "Set while the axis is in the zone"},
}};

constexpr TableLayout kLayout{
    Tool::zone, "clsZone", Zone::kTable, Zone::kZone, static_cast<int>(Zone::kRows), kColumns};

}  // namespace

const TableLayout& clsHX7Zone::Columns() {
  return kLayout;
}

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
  std::ranges::transform(limits, controller.begin(), PlainCount);
  return kSuccess;
}

ResultCode clsHX7Zone::SendRow(int row, const std::vector<std::string>& controller) {
  ZoneRow limits;
  std::copy_n(controller.begin(), limits.size(), limits.begin());
  return gMainForm->Helix7()->writeZoneTable(Narrow<std::int16_t>(row - 1), limits);
}

}  // namespace velmoor
