#include "console/SystemCommand.h"

#include <algorithm>

#include "console/CommandContext.h"
#include "mechanics/MachineEdit.h"
#include "mechanics/MachineKeys.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "project/SetParameters.h"
#include "project/clsHX7Project.h"
#include "project/data/MotorLimits.h"

namespace velmoor {
namespace {

constexpr const char* kMotor = "motor";

// Takes every assignment; the words of the first that is refused.
std::string TakeAll(MachineEdit& edit, const std::vector<Assignment>& assignments) {
  for (const MachineKey& key : MachineKeys()) {
    const auto given = std::ranges::find(assignments, key.name, &Assignment::first);
    if (given == assignments.end()) continue;
    std::string words = Assign(edit, key, given->second);
    const bool decimal = key.form == MachineKey::Form::number;
    if (!words.empty()) return words + (decimal ? DecimalHint(given->second) : "");
  }
  return {};
}

// The values that do not keep their numbers, as the window's preview shows them; empty: all do.
std::string OtherNumbers(const MachineConsequences& consequences) {
  std::string text;
  for (const RescaledValue& value : consequences.values) {
    if (!value.error.empty()) continue;
    text += "\r" + value.place + ": " + value.oldText + ", now " + value.newText;
  }
  return text.empty() ? text : "These values take a limit or follow the machine:" + text;
}

}  // namespace

std::vector<CsvRow> SystemRows(clsHX7Project& project) {
  const MachineEdit machine = project.MechanicalSystem().Edit();
  const MachineFigures figures = machine.Figures();
  const MachineDescription description = machine.Description();
  const std::string& unit = description.distanceUnits;
  std::vector<CsvRow> rows{{"name", "value", "unit"}};
  const auto add = [&rows](const std::string& name, const std::string& value,
                           const std::string& unitWord = {}) {
    rows.push_back({name, value, unitWord});
  };
  add("system", machine.Value("Pn82E.2"));
  add("measure", machine.Value("Pn82F.0"), unit);
  add("n1", machine.Value("Pn82B"));
  add("n2", machine.Value("Pn82C"));
  add("resolution", machine.Value("Pn82D"));
  add("units", unit);
  add("time", description.timeUnits);
  add("encoder", machine.Value("Pn82E.3"), "lines");
  for (const char* name : {"Pn81E", "Pn81F", "Pn820", "Pn821", "Pn822"}) {
    const int row = MachineEdit::FindRow(name);
    add(machine.Text(row, Column::description), machine.Value(name),
        machine.Text(row, Column::unit));
  }
  add("motor", project.MotorSize(), "W");
  add("A", machine.Value("Pn203"));
  add("B", machine.Value("Pn202"));
  add("travel per motor turn", NumberText(figures.travelPerMotorTurn), unit);
  add("counts per unit", NumberText(figures.countsPerUnit));
  if (figures.hasRange) {
    add("lowest resolution", NumberText(figures.lowestResolution));
    add("highest resolution", NumberText(figures.highestResolution));
  }
  return rows;
}

bool IsSystemKey(const std::string& key) {
  return key == kMotor || MachineKeyNamed(key) != nullptr;
}

namespace {

bool SetMachine(clsHX7Project& project, const std::vector<Assignment>& assignments) {
  MachineEdit edit = project.MechanicalSystem().Edit();
  std::string words = TakeAll(edit, assignments);
  if (words.empty()) words = edit.Figures().reason;
  if (!words.empty()) {
    ShowExclamation(words);
    return false;
  }
  const std::string corrected = edit.NewlyCorrected();
  if (!corrected.empty()) ShowInformation(corrected);
  if (!edit.IsDirty()) return true;
  const MachineConsequences consequences = project.Consequences(edit.Wanted());
  const std::string question = edit.CommitQuestion();
  if (!question.empty()) {
    // Whoever types the command has decided; only data that would be lost takes an agreement more.
    if (consequences.emptied.empty()) {
      ShowInformation(question.substr(0, question.rfind("\r\r")));
    } else if (!AskOkCancel(question)) {
      ShowInformation("Commit data change has been canceled.  Say --yes to agree.");
      return false;
    }
  }
  const std::string information = edit.CommitInformation();
  if (!information.empty()) ShowInformation(information);
  const std::string others = OtherNumbers(consequences);
  if (!project.MechanicalSystem().Accept(edit)) return false;
  if (!others.empty()) ShowInformation(others);
  return true;
}

}  // namespace

bool SetSystem(clsHX7Project& project, std::vector<Assignment> assignments) {
  std::string watts;
  const auto motor = std::ranges::find(assignments, kMotor, &Assignment::first);
  if (motor != assignments.end()) {
    watts = CheckedMotorSize(motor->second);
    if (watts.empty()) {
      ShowExclamation("'" + motor->second + "' is no rated power in watts!");
      return false;
    }
    assignments.erase(motor);
  }
  if (!assignments.empty() && !SetMachine(project, assignments)) return false;
  project.SetMotorSize(watts);
  return true;
}

}  // namespace velmoor
