// What the project held when its snapshot was taken against what was uploaded since.

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/Numbers.h"
#include "project/ProjectCompare.h"
#include "project/ToolNames.h"
#include "project/clsHX7Project.h"

namespace velmoor {
namespace {

// Words such as "STOP" and "-" have no unit.
std::string WithUnit(const std::string& text, const std::string& unit) {
  const bool isNumber = text.find_first_of("0123456789") != std::string::npos;
  return isNumber && !unit.empty() ? text + " " + unit : text;
}

// Counts are what the amplifier holds: a text is the same only in the same unit.
const std::string& UnitOf(CellKind kind, const ShownUnits& units) {
  static const std::string kNone;
  switch (kind) {
    case CellKind::position:
    case CellKind::distance:
      return units.distance;
    case CellKind::speed:
      return units.speed;
    default:
      return kNone;
  }
}

// Labels live in the project alone: a jump is compared by the number of the step it leads to.
std::string JumpText(const MotionTable::Rows& cells, const std::string& label) {
  if (label.empty() || label == "END") return label;
  const auto step =
      std::ranges::find_if(cells, [&](const auto& row) { return row.front() == label; });
  return step == cells.end() ? "END" : "step " + NumberText(step - cells.begin() + 1);
}

std::string CellText(const TableColumn& column, const MotionTable::Rows& cells, std::size_t row,
                     std::size_t place, const ShownUnits& units) {
  const std::string& text = cells[row][place];
  if (column.kind == CellKind::next) return JumpText(cells, text);
  return WithUnit(text, UnitOf(column.kind, units));
}

bool IsCompared(const TableColumn& column) {
  return column.kind != CellKind::fixed && column.kind != CellKind::label;
}

PartComparison CompareTable(const std::string& name, const MotionTable& table, int firstRow,
                            const MotionTable::Snapshot& before, const ShownUnits& unitsBefore,
                            const ShownUnits& unitsNow) {
  PartComparison part{name, table.RowsInArray(), {}};
  const MotionTable::Rows now = table.TakeSnapshot().cells;
  const auto columns = table.Layout().columns;
  for (std::size_t row = 0; row < now.size(); ++row) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (!IsCompared(columns[i])) continue;
      const std::string mine = CellText(columns[i], before.cells, row, i, unitsBefore);
      const std::string theirs = CellText(columns[i], now, row, i, unitsNow);
      if (mine == theirs) continue;
      part.differences.push_back({name, NumberText(static_cast<int>(row) + firstRow),
                                  std::string(columns[i].field), mine, theirs});
    }
  }
  return part;
}

std::string ParameterText(const BlockMatrix& rows, int row, const ShownUnits& units) {
  const std::string& kind = rows.Text(row, Column::unit);
  std::string text = rows.Text(row, Column::value);
  // The axis digit of this one comes from the connection.
  if (rows.Text(row, Column::name) == "Pn000" && text.size() == 4) text[1] = 'x';
  if (kind == "distance") return WithUnit(text, units.distance);
  if (kind == "speed") return WithUnit(text, units.speed);
  if (kind == "acceleration") return WithUnit(text, units.acceleration);
  return text;
}

// Rows of `skip` are left out: a parameter that two tools hold is told of once.
PartComparison CompareParameters(const std::string& name, const BlockMatrix& before,
                                 const BlockMatrix& now, const BlockMatrix* skip,
                                 const ShownUnits& unitsBefore, const ShownUnits& unitsNow) {
  PartComparison part{name, 0, {}};
  for (int row = 1; row <= now.Rows(); ++row) {
    const std::string& strPn = now.Text(row, Column::name);
    const int old = before.FindRow(strPn);
    if (old == 0 || (skip != nullptr && skip->FindRow(strPn) > 0)) continue;
    ++part.rows;
    const std::string mine = ParameterText(before, old, unitsBefore);
    const std::string theirs = ParameterText(now, row, unitsNow);
    if (mine == theirs) continue;
    part.differences.push_back({name, strPn, now.Text(row, Column::description), mine, theirs});
  }
  return part;
}

}  // namespace

std::vector<PartComparison> clsHX7Project::CompareWithSnapshot() const {
  if (!snapshots_) return {};
  const ShownUnits now = PresentUnits();
  const ShownUnits& before = snapshots_->units;
  const BlockMatrix& parameters = snapshots_->parameterTools.front().rows;
  const auto compareTable = [&](Tool tool, const MotionTable& table, int firstRow,
                                std::size_t place) {
    return CompareTable(ToolName(tool), table, firstRow, snapshots_->tables[place], before, now);
  };
  PartComparison machine =
      CompareParameters("Mechanical System Parameters", snapshots_->machine.rows,
                        clsMechanicalSystem_.Rows(), &parameters, before, now);
  if (snapshots_->machineUnread) {
    machine.differences.push_back(
        {machine.part, "", "Machine", "described", "no description that can be used"});
  }
  return {std::move(machine),
          CompareParameters("Parameters", parameters, clsEditor_.Rows(), nullptr, before, now),
          compareTable(Tool::position, clsPosition_, 1, 0), compareTable(Tool::jog, clsJog_, 0, 1),
          compareTable(Tool::zone, clsZone_, 0, 2)};
}

ShownUnits clsHX7Project::PresentUnits() const {
  return {strDistanceUnits_, strSpeedUnits_, strAccelerationUnits_};
}

}  // namespace velmoor
