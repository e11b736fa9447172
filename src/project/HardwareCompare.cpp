// What the project holds against what was uploaded: judged in what the amplifier takes, and told in
// the units of each side.

#include <algorithm>
#include <optional>

#include "platform/Numbers.h"
#include "project/ProjectCompare.h"
#include "project/clsHX7Project.h"
#include "project/data/MachineUnits.h"

namespace velmoor {
namespace {

// Words such as "STOP" and "-" have no unit.
std::string WithUnit(const std::string& text, const std::string& unit) {
  const bool isNumber = text.find_first_of("0123456789") != std::string::npos;
  return isNumber && !unit.empty() ? text + " " + unit : text;
}

std::string UnitOf(CellKind kind, const Units& units) {
  switch (kind) {
    case CellKind::position:
    case CellKind::distance:
      return units.Word(UnitKind::distance);
    case CellKind::speed:
      return units.Word(UnitKind::speed);
    default:
      return {};
  }
}

// A jump is told by the number of the step it leads to: labels live in the project alone.
std::string CellText(const TableColumn& column, const std::string& cell,
                     const std::string& controller, const Units& units) {
  if (column.kind != CellKind::next) return WithUnit(cell, UnitOf(column.kind, units));
  const auto step = ParseWhole(controller);
  return step ? "step " + NumberText(*step + 1) : controller;
}

PartComparison CompareTable(Tool tool, const MotionTable& table, const Units& before,
                            const Units& after) {
  const int firstRow = InfoOf(tool).firstRow;
  PartComparison part{std::string(InfoOf(tool).item), table.RowsInArray(), {}};
  if (!table.HoldsUpload()) return part;
  const MotionTable::Step uploaded = table.UploadStep(after, false);
  const auto columns = table.Layout().columns;
  for (int row = 1; row <= table.RowsInArray(); ++row) {
    const MotionTable::StoredRow& mine = table.Stored(row);
    const MotionTable::StoredRow& theirs = uploaded.rows[static_cast<std::size_t>(row) - 1];
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (SentField(columns[i]).empty() || mine.controller[i] == theirs.controller[i]) continue;
      part.differences.push_back(
          {part.part, NumberText(row - 1 + firstRow), std::string(columns[i].field),
           CellText(columns[i], mine.cells[i], mine.controller[i], before),
           CellText(columns[i], theirs.cells[i], theirs.controller[i], after)});
    }
  }
  return part;
}

std::string ParameterText(const Parameter& parameter, const std::string& controller,
                          const Units& units) {
  const std::string text = ComparedForm(parameter.Pn(), ShownText(parameter, controller, units));
  return parameter.unit ? WithUnit(text, units.Word(*parameter.unit)) : text;
}

// The readable parts of the digits and halves that describe the machine.
void CompareDescriptions(const MachineDescription& mine, const MachineDescription& theirs,
                         PartComparison& part) {
  const auto compare = [&part](const char* row, const std::string& field, const std::string& first,
                               const std::string& second) {
    ++part.rows;
    if (first != second) part.differences.push_back({part.part, row, field, first, second});
  };
  const Machine& a = mine.machine;
  const Machine& b = theirs.machine;
  compare("Pn82E.0", "Machine Units Base", mine.distanceUnits, theirs.distanceUnits);
  compare("Pn82E.1", "Time Base", mine.timeUnits, theirs.timeUnits);
  compare("Pn82E.2", "System", MechanicalSystemFromIndex(a.system),
          MechanicalSystemFromIndex(b.system));
  compare("Pn82E.3", "Encoder Count", NumberText(a.encoderCount), NumberText(b.encoderCount));
  compare("Pn82F.0", SystemMeasureDescription(a.system),
          NumberText(a.length) + " " + mine.distanceUnits,
          NumberText(b.length) + " " + theirs.distanceUnits);
}

}  // namespace

std::vector<PartComparison> clsHX7Project::CompareWithUpload() const {
  if (!HoldsUpload()) return {};
  const auto& staged = parameters_.Staged();
  const Units& before = PresentUnits();
  const Units after = parameters_.UnitsAfter(parameters_.StagedChanges());
  PartComparison machine{std::string(InfoOf(Tool::mechanicalSystem).item), 0, {}};
  PartComparison parameters{"Parameters", 0, {}};
  PartComparison notSent{kNotSentPart, 0, {}, false};
  for (const auto& [strPn, controller] : staged) {
    const Parameter& parameter = parameters_.Get(strPn);
    PartComparison& part = IsMechSystemPn(strPn) ? machine
                           : IsNeverSent(strPn)  ? notSent
                                                 : parameters;
    ++part.rows;
    if (ComparedForm(strPn, controller) == ComparedForm(strPn, parameter.controller)) continue;
    part.differences.push_back({part.part, strPn, parameter.definition.parameter_name,
                                ParameterText(parameter, parameter.controller, before),
                                ParameterText(parameter, controller, after)});
  }
  if (machine.rows > 0) {
    CompareDescriptions(DescribeMachine(parameters_), DescribeMachine([&staged](const char* strPn) {
                          return staged.find(strPn)->second;
                        }),
                        machine);
  }
  if (machineUnread_) {
    machine.differences.push_back(
        {machine.part, "", "Machine", "described", "no description that can be used"});
  }
  std::vector<PartComparison> parts{std::move(machine), std::move(parameters),
                                    CompareTable(Tool::position, clsPosition_, before, after),
                                    CompareTable(Tool::jog, clsJog_, before, after),
                                    CompareTable(Tool::zone, clsZone_, before, after)};
  if (!notSent.differences.empty()) parts.push_back(std::move(notSent));
  return parts;
}

}  // namespace velmoor
