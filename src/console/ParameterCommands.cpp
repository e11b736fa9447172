#include "console/ParameterCommands.h"

#include "platform/Numbers.h"
#include "project/clsHX7Project.h"
#include "tools/ParameterRules.h"

namespace velmoor {
namespace {

// A limit that has no meaning for the user, such as a list's, is left empty.
CsvRow RowOf(const Project& project, const ParameterRow& row, const Parameter& parameter) {
  const bool limited = row.list.empty();
  return {row.name,
          row.description,
          row.value,
          UnitsInWords(project, row.unit),
          limited ? MinimumText(project, row) : std::string(),
          limited ? MaximumText(project, row) : std::string(),
          parameter.recorded ? parameter.controller : std::string(),
          parameter.IsMarked() ? "1" : "0"};
}

}  // namespace

std::vector<CsvRow> ParameterRows(clsHX7Project& project) {
  std::vector<CsvRow> rows{
      {"pn", "description", "value", "unit", "minimum", "maximum", "controller", "dirty"}};
  for (int row = 1; row <= project.Editor().RowsInArray(); ++row) {
    rows.push_back(
        RowOf(project, project.Editor().Describe(row), project.Editor().ParameterOf(row)));
  }
  return rows;
}

}  // namespace velmoor
