#include "console/ParameterCommands.h"

#include <algorithm>
#include <set>

#include "console/CommandContext.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "project/clsHX7Project.h"
#include "tools/ParameterRules.h"

namespace velmoor {
namespace {

struct CheckedValue {
  int row = 0;
  std::string value;
};

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

// Reads one assignment into `taken`. Returns what is wrong with it, or an empty text.
std::string Check(clsHX7Project& project, const std::string& text, CheckedValue& taken) {
  const std::size_t at = text.find('=');
  if (at == std::string::npos) return "'" + text + "' is no assignment such as Pn81B=12.5";
  const std::string name = text.substr(0, at);
  clsHX7Editor& editor = project.Editor();
  taken.row = editor.FindRow(name);
  if (taken.row == 0) return "'" + name + "' is no parameter of the direct parameter editor";
  std::string locked = LockedReason(name);
  if (!locked.empty()) return locked;
  const std::string value = text.substr(at + 1);
  if (value.empty()) return name + ": A value is missing";
  const CellCheck check =
      CheckParameter(project, ParameterWindow::editor, editor.Describe(taken.row), value);
  taken.value = check.text;
  return check.accepted ? std::string() : name + ": " + OneLine(check.words) + DecimalHint(value);
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

std::vector<std::string> SetParameters(clsHX7Project& project,
                                       std::span<const std::string> assignments) {
  std::vector<std::string> faults;
  std::vector<CheckedValue> taken;
  std::set<int> rows;
  for (const std::string& text : assignments) {
    CheckedValue value;
    std::string fault = Check(project, text, value);
    if (fault.empty() && !rows.insert(value.row).second) {
      fault = "'" + text + "' assigns to its parameter a second time";
    }
    if (!fault.empty()) faults.push_back(fault);
    taken.push_back(value);
  }
  if (!faults.empty()) return faults;
  for (const CheckedValue& value : taken) {
    project.Editor().EditValue(value.row, value.value);
  }
  if (!project.Editor().HoldsEdits()) return faults;
  if (!project.Editor().AcceptEdits()) faults.push_back("Nothing was stored");
  return faults;
}

}  // namespace velmoor
