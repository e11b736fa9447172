#include "console/SystemCommand.h"

#include <algorithm>
#include <array>

#include "console/CommandContext.h"
#include "mechanics/MachineEdit.h"
#include "platform/Csv.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "project/clsHX7Project.h"
#include "project/data/MachineUnits.h"
#include "project/data/MotorLimits.h"

namespace velmoor {
namespace {

struct Key {
  const char* name;
  const char* row;  // of the machine; null: a choice by index
};

constexpr const char* kMotor = "motor";

constexpr std::array<Key, 9> kKeys{{{kMotor, nullptr},
                                    {"system", nullptr},
                                    {"encoder", nullptr},
                                    {"units", "Pn82E.0"},
                                    {"time", "Pn82E.1"},
                                    {"measure", "Pn82F.0"},
                                    {"n1", "Pn82B"},
                                    {"n2", "Pn82C"},
                                    {"resolution", "Pn82D"}}};

const Key* KeyNamed(const std::string& name) {
  const auto* const found =
      std::find_if(kKeys.begin(), kKeys.end(), [&](const Key& key) { return key.name == name; });
  return found == kKeys.end() ? nullptr : found;
}

std::string Choose(MachineEdit& edit, const std::string& key, const std::string& text) {
  if (key == "system") {
    for (std::int32_t index = 0; index < 5; ++index) {
      if (LowerCase(MechanicalSystemFromIndex(index)) != LowerCase(text)) continue;
      (void)edit.SetSystem(index);
      return {};
    }
    return "'" + text + "' is no mechanical system!";
  }
  for (std::int32_t index = 0; index < 3; ++index) {
    if (NumberText(EncoderCountFromIndex(index)) != text) continue;
    (void)edit.SetEncoder(index);
    return {};
  }
  return "'" + text + "' is no encoder!";
}

// Takes every assignment, each judged alone; the words of the first that is none. The machine as a
// whole is judged when all are there. A resolution that was asked for stands beside every system
// and encoder: these come first.
std::string TakeAll(MachineEdit& edit, std::vector<Assignment> assignments) {
  std::ranges::stable_sort(assignments, {}, [](const Assignment& assignment) {
    return KeyNamed(assignment.first)->row != nullptr;
  });
  for (const auto& [key, text] : assignments) {
    const char* const row = KeyNamed(key)->row;
    if (row == nullptr) {
      std::string words = Choose(edit, key, text);
      if (!words.empty()) return words;
      continue;
    }
    const MachineCheck check = edit.SetValue(row, text);
    const bool stands = check.Accepted() || check.kind == MachineCheck::Kind::whole;
    // The last line asks or tells what becomes of a window's cell.
    if (!stands) return check.words.substr(0, check.words.find_last_of('\r')) + DecimalHint(text);
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

std::string SystemCsv(clsHX7Project& project) {
  const MachineEdit machine = project.MechanicalSystem().Edit();
  const MachineFigures figures = machine.Figures();
  const MachineDescription description = machine.Description();
  const std::string& unit = description.distanceUnits;
  std::string text = CsvLine({"name", "value", "unit"});
  const auto add = [&text](const std::string& name, const std::string& value,
                           const std::string& unitWord = {}) {
    text += CsvLine({name, value, unitWord});
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
  return text;
}

bool IsSystemKey(const std::string& key) {
  return KeyNamed(key) != nullptr;
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
