#include "project/SetParameters.h"

#include <set>

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

std::string DecimalHint(const std::string& value) {
  const std::size_t comma = value.find(',');
  if (comma == std::string::npos) return {};
  std::string pointed = value;
  pointed[comma] = '.';
  return ParseFloat(pointed) ? " A point separates the decimals: " + pointed : std::string();
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
