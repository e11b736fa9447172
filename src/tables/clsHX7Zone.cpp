#include "tables/clsHX7Zone.h"

#include <array>

#include "link/clsHX7Helix7.h"
#include "platform/Numbers.h"
#include "project/data/Schema.h"
#include "session/Session.h"

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

constexpr TableLayout kLayout{"clsZone", Zone::kTable, Zone::kZone, static_cast<int>(Zone::kRows),
                              kColumns};

}  // namespace

clsHX7Zone::clsHX7Zone() : MotionTable(kLayout) {}

bool clsHX7Zone::IsDataSetComplete(int row) const {
  return Text(row, lower).empty() == Text(row, upper).empty();
}

ResultCode clsHX7Zone::UploadRow(int row) {
  ZoneRow limits;
  const ResultCode result =
      gMainForm->Helix7()->readZoneTable(Narrow<std::int16_t>(row - 1), limits);
  if (result != kSuccess) return result;
  for (const int column : {lower, upper}) {
    const auto& text = limits[static_cast<std::size_t>(column)];
    SetText(row, column, FromController(CellKind::distance, std::string(Trim(text))));
  }
  return kSuccess;
}

ResultCode clsHX7Zone::SendRecord(const RowSet& record) {
  const ZoneRow limits{record.Text(Zone::kControllerLowerLimit),
                       record.Text(Zone::kControllerUpperLimit)};
  return gMainForm->Helix7()->writeZoneTable(
      Narrow<std::int16_t>(Int32FromText(record.Text(Zone::kZone))), limits);
}

}  // namespace velmoor
