#include "tables/clsHX7Jog.h"

#include <array>
#include <memory>

#include "link/clsHX7Helix7.h"
#include "platform/Numbers.h"
#include "project/data/Schema.h"
#include "project/data/UnitConversion.h"
#include "session/Session.h"
#include "tables/frmJog.h"

namespace velmoor {

using schema::Jog;

namespace {

constexpr std::array<TableColumn, 5> kColumns{{
    {Jog::kSpeed,
     Jog::kControllerValue,
     CellKind::speed,
     "Speed",
     "speed",
     {},
     "Speed of jogging while the inputs choose it"},
    {Jog::kBit[0], {}, CellKind::fixed, "JOG0", {}, {}, "Input that chooses this speed"},
    {Jog::kBit[1], {}, CellKind::fixed, "JOG1", {}, {}, "Input that chooses this speed"},
    {Jog::kBit[2], {}, CellKind::fixed, "JOG2", {}, {}, "Input that chooses this speed"},
    {Jog::kBit[3], {}, CellKind::fixed, "JOG3", {}, {}, "Input that chooses this speed"},
}};

constexpr TableLayout kLayout{
    Tool::jog, "clsJog", Jog::kTable, Jog::kJog, static_cast<int>(Jog::kRows), kColumns};

}  // namespace

const TableLayout& clsHX7Jog::Columns() {
  return kLayout;
}

clsHX7Jog::clsHX7Jog() : MotionTable(kLayout) {
  TakeWindow(std::make_unique<frmJog>(*this));
}

ResultCode clsHX7Jog::UploadRow(int row, std::vector<std::string>& controller) {
  std::string counts;
  const ResultCode result =
      gMainForm->Helix7()->readJogTable(Narrow<std::int16_t>(row - 1), counts);
  if (result == kSuccess) controller[speed] = PlainCount(counts);
  return result;
}

ResultCode clsHX7Jog::SendRow(int row, const std::vector<std::string>& controller) {
  return gMainForm->Helix7()->writeJogTable(Narrow<std::int16_t>(row - 1), controller[speed]);
}

}  // namespace velmoor
