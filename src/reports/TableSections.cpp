#include "reports/TableSections.h"

#include "platform/Numbers.h"
#include "project/clsHX7Project.h"

namespace velmoor {

void TableSection::ActiveReport_ReportStart() {
  std::vector<std::string> headings = PrintedHeadings(table_.Layout(), Proj());
  headings.insert(headings.begin(), "Row ID");
  SetHeadings(std::move(headings));
  arTemp.clear();
  for (int row = 1; row <= table_.RowsInArray(); ++row) arTemp.push_back(table_.Stored(row).cells);
}

bool TableSection::IsNumber(std::size_t column) const {
  const CellKind kind = table_.Layout().columns[column].kind;
  return kind == CellKind::distance || kind == CellKind::speed || kind == CellKind::position ||
         kind == CellKind::fixed;
}

std::vector<PrintCell> TableSection::Fields() const {
  if (i > static_cast<int>(arTemp.size())) return {};
  const std::vector<std::string>& row = arTemp[static_cast<std::size_t>(i) - 1];
  std::vector<PrintCell> fields{{NumberText(i - 1), true}};
  for (std::size_t column = 0; column < row.size(); ++column) {
    fields.push_back({row[column], IsNumber(column)});
  }
  return fields;
}

rptHX7Index::rptHX7Index(clsHX7Project& project) : TableSection(project, project.Position()) {}
rptHX7Jog::rptHX7Jog(clsHX7Project& project) : TableSection(project, project.Jog()) {}
rptHX7Zone::rptHX7Zone(clsHX7Project& project) : TableSection(project, project.Zone()) {}

void rptHX7Index::ActiveReport_ReportStart() {
  TableSection::ActiveReport_ReportStart();
  SetNote(
      "Row ID counts from 0, as the amplifier does: step 1 of the index table's window is row 0.");
}

bool rptHX7Index::IsNumber(std::size_t column) const {
  return column == clsHX7Position::loop || TableSection::IsNumber(column);
}

}  // namespace velmoor
