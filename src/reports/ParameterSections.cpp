#include "reports/ParameterSections.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/Numbers.h"

namespace velmoor {
namespace {

// Digits of a pattern such as "0FB1" stand below those of numbers.
PrintCell ValueCell(const ParameterRow& row) {
  const bool number = row.list.empty() && (row.nibble != nullptr || ParseFloat(row.value));
  return {row.value, number};
}

}  // namespace

// ---- what all share

void ParameterSection::ActiveReport_ReportStart() {
  std::vector<std::string> headings{"Parameter", "Description", "Value",
                                    "Units",     "Minimum",     "Maximum"};
  headings.resize(static_cast<std::size_t>(columns_));
  SetHeadings(std::move(headings));
  arTemp = TakeRows();
}

std::vector<PrintCell> ParameterSection::Fields() const {
  if (i > static_cast<int>(arTemp.size())) return {};
  const ParameterRow& row = arTemp[static_cast<std::size_t>(i) - 1];
  std::vector<PrintCell> fields{{row.name}, {row.description}, ValueCell(row)};
  if (columns_ != ParameterColumns::values) fields.push_back({UnitsInWords(Proj(), row.unit)});
  if (columns_ != ParameterColumns::limits) return fields;
  // A list has no limits that mean anything to the reader.
  const bool limited = row.list.empty();
  fields.push_back({limited ? MinimumText(Proj(), row) : "", true});
  fields.push_back({limited ? MaximumText(Proj(), row) : "", true});
  return fields;
}

std::vector<ParameterRow> ToolSection::TakeRows() const {
  std::vector<ParameterRow> rows;
  for (int row = 1; row <= tool_.RowsInArray(); ++row) {
    rows.push_back(tool_.Describe(row));
    rows.back().value = tool_.ParameterOf(row).text;
  }
  return rows;
}

// ---- tuning

std::vector<ParameterRow> rptHX7Tuning::TakeRows() const {
  static constexpr std::array<std::string_view, 12> kOrder{"Pn100", "Pn101", "Pn102", "Pn103",
                                                           "Pn107", "Pn108", "Pn109", "Pn10A",
                                                           "Pn110", "Pn401", "Pn408", "Pn409"};
  const std::vector<ParameterRow> arTempAll = ToolSection::TakeRows();
  std::vector<ParameterRow> rows;
  for (const std::string_view strPn : kOrder) {
    const auto found = std::ranges::find(arTempAll, strPn, &ParameterRow::name);
    if (found != arTempAll.end()) rows.push_back(*found);
  }
  return rows;
}

// ---- the machine

std::vector<ParameterRow> rptHX7MechanicalSystem::TakeRows() const {
  const MachineEdit machine = Proj().MechanicalSystem().Edit();
  std::vector<ParameterRow> rows;
  for (int row = 1; row <= MachineEdit::Rows(); ++row) {
    // Their digits and their number have rows of their own, which are read in their place.
    const std::string_view name = MachineEdit::NameOf(row);
    if (name == "Pn82E" || name == "Pn82F") continue;
    ParameterRow& shown = rows.emplace_back();
    shown.name = name;
    shown.description = machine.Text(row, Column::description);
    shown.value = machine.Text(row, Column::value);
    shown.minimum = machine.Text(row, Column::minimum);
    shown.maximum = machine.Text(row, Column::maximum);
    shown.unit = machine.Text(row, Column::unit);
  }
  return rows;
}

void rptHX7MechanicalSystem::ActiveReport_ReportStart() {
  ParameterSection::ActiveReport_ReportStart();
  // Whatever is moved last stands first.
  static constexpr std::array<std::string_view, 11> kLead{"Pn82E.2", "Pn82E.3", "Pn829", "Pn82A",
                                                          "Pn82B",   "Pn82C",   "Pn82D", "Pn82E.0",
                                                          "Pn82E.1", "Pn82F.0", "Pn830"};
  std::vector<std::string> descriptions;
  for (const std::string_view strPn : kLead) {
    const auto found = std::ranges::find(arTemp, strPn, &ParameterRow::name);
    if (found != arTemp.end()) descriptions.push_back(found->description);
  }
  for (auto description = descriptions.rbegin(); description != descriptions.rend();
       ++description) {
    MoveToFrontOfBlockMatrixByDescription(*description);
  }
}

void rptHX7MechanicalSystem::MoveToFrontOfBlockMatrixByDescription(const std::string& strDesc) {
  const auto found = std::ranges::find(arTemp, strDesc, &ParameterRow::description);
  if (found != arTemp.end()) std::rotate(arTemp.begin(), found, found + 1);
}

}  // namespace velmoor
