#include "tables/clsHX7Jog.h"

#include <array>
#include <memory>

#include "link/clsHX7Helix7.h"
#include "platform/Numbers.h"
#include "project/data/Schema.h"
#include "session/Session.h"
#include "tables/frmJog.h"

namespace velmoor {

using schema::Jog;

namespace {

constexpr std::array<TableColumn, 5> kColumns{{
    {Jog::kSpeed, Jog::kControllerValue, CellKind::speed},
    {Jog::kBit[0], {}, CellKind::fixed},
    {Jog::kBit[1], {}, CellKind::fixed},
    {Jog::kBit[2], {}, CellKind::fixed},
    {Jog::kBit[3], {}, CellKind::fixed},
}};

constexpr TableLayout kLayout{"clsJog", Jog::kTable, Jog::kJog, static_cast<int>(Jog::kRows),
                              kColumns};

}  // namespace

clsHX7Jog::clsHX7Jog() : MotionTable(kLayout) {
  TakeWindow(std::make_unique<frmJog>(*this));
}

ResultCode clsHX7Jog::UploadRow(int row) {
  std::string counts;
  const ResultCode result =
      gMainForm->Helix7()->readJogTable(Narrow<std::int16_t>(row - 1), counts);
  if (result == kSuccess) {
    SetText(row, speed, FromController(CellKind::speed, std::string(Trim(counts))));
  }
  return result;
}

ResultCode clsHX7Jog::SendRecord(const RowSet& record) {
  return gMainForm->Helix7()->writeJogTable(
      Narrow<std::int16_t>(Int32FromText(record.Text(Jog::kJog))),
      record.Text(Jog::kControllerValue));
}

}  // namespace velmoor
