#include "tables/TableColumns.h"

namespace velmoor {
namespace {

std::string UnitOf(CellKind kind, const Project& project) {
  switch (kind) {
    case CellKind::position:
    case CellKind::distance:
      return project.DistanceUnits();
    case CellKind::speed:
      return project.SpeedUnits();
    default:
      return {};
  }
}

}  // namespace

std::vector<std::string> Headings(const TableLayout& layout, const Project& project) {
  std::vector<std::string> headings;
  for (const TableColumn& column : layout.columns) {
    const std::string unit = UnitOf(column.kind, project);
    headings.push_back(std::string(column.caption) + (unit.empty() ? "" : " (" + unit + ")"));
  }
  return headings;
}

std::vector<std::string> PrintedHeadings(const TableLayout& layout, const Project& project) {
  std::vector<std::string> headings = Headings(layout, project);
  for (std::size_t i = 0; i < headings.size(); ++i) {
    const TableColumn& column = layout.columns[i];
    if (column.printed.empty()) continue;
    headings[i] = std::string(column.printed) + UnitOf(column.kind, project) + ")";
  }
  return headings;
}

std::vector<std::string_view> CsvNames(const TableLayout& layout) {
  std::vector<std::string_view> names;
  for (const TableColumn& column : layout.columns) {
    if (!column.csv.empty()) names.push_back(column.csv);
  }
  return names;
}

}  // namespace velmoor
