#include "console/SystemCommand.h"

#include <algorithm>
#include <array>

#include "console/CommandContext.h"
#include "mechanics/MachineEdit.h"
#include "mechanics/MachineUnits.h"
#include "platform/Csv.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "project/clsHX7Project.h"

namespace velmoor {
namespace {

struct Key {
  const char* name;
  const char* row;  // of the machine; null: a choice by index
};

constexpr std::array<Key, 8> kKeys{{{"system", nullptr},
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

MachineCheck Unknown(const std::string& what, const std::string& text) {
  return {MachineCheck::Kind::restore, "'" + text + "' is no " + what + "!"};
}

MachineCheck Choose(MachineEdit& edit, const std::string& key, const std::string& text) {
  if (key == "system") {
    for (std::int32_t index = 0; index < 5; ++index) {
      if (LowerCase(MechanicalSystemFromIndex(index)) == LowerCase(text)) {
        return edit.SetSystem(index);
      }
    }
    return Unknown("mechanical system", text);
  }
  for (std::int32_t index = 0; index < 3; ++index) {
    if (NumberText(EncoderCountFromIndex(index)) == text) return edit.SetEncoder(index);
  }
  return Unknown("encoder", text);
}

MachineCheck Carry(MachineEdit& edit, const Assignment& assignment) {
  const Key& key = *KeyNamed(assignment.first);
  return key.row != nullptr ? edit.SetValue(key.row, assignment.second)
                            : Choose(edit, assignment.first, assignment.second);
}

// Some changes are possible only after others: what is refused is tried again as long as any other
// change goes through. Returns the words of the first that never does.
std::string CarryAll(MachineEdit& edit, std::vector<Assignment> pending) {
  std::stable_sort(pending.begin(), pending.end(), [](const Assignment& a, const Assignment& b) {
    return KeyNamed(a.first) < KeyNamed(b.first);
  });
  std::string words;
  for (std::size_t before = pending.size() + 1; !pending.empty() && pending.size() < before;) {
    before = pending.size();
    words.clear();
    std::erase_if(pending, [&](const Assignment& assignment) {
      const MachineCheck check = Carry(edit, assignment);
      // A system or an encoder stands even where the gear ratio is not valid yet.
      const bool stands = KeyNamed(assignment.first)->row == nullptr && !check.Accepted() &&
                          check.words.find("gear ratio") != std::string::npos;
      if (!check.Accepted() && !stands && words.empty()) {
        words =
            check.words.substr(0, check.words.find_last_of('\r')) + DecimalHint(assignment.second);
      }
      return check.Accepted() || stands;
    });
  }
  return pending.empty() ? std::string() : words;
}

// The tables that a change of system and resolution empties hold something.
bool HoldsProgramme(clsHX7Project& project) {
  const auto holds = [](const MotionTable& table) {
    for (int row = 1; row <= table.RowsInArray(); ++row) {
      if (!table.IsBlank(row)) return true;
    }
    return false;
  };
  return holds(project.Position()) || holds(project.Zone());
}

}  // namespace

std::string SystemCsv(clsHX7Project& project) {
  const MachineEdit edit(project.MechanicalSystem());
  const MachineFigures figures = edit.Figures();
  const std::string& unit = edit.DistanceUnits();
  std::string text = CsvLine({"name", "value", "unit"});
  const auto add = [&text](const std::string& name, const std::string& value,
                           const std::string& unitWord = {}) {
    text += CsvLine({name, value, unitWord});
  };
  add("system", edit.Value("Pn82E.2"));
  add("measure", edit.Value("Pn82F.0"), unit);
  add("n1", edit.Value("Pn82B"));
  add("n2", edit.Value("Pn82C"));
  add("resolution", edit.Value("Pn82D"));
  add("units", unit);
  add("time", edit.TimeUnits());
  add("encoder", edit.Value("Pn82E.3"), "lines");
  for (const char* name : {"Pn81E", "Pn81F", "Pn820", "Pn821", "Pn822"}) {
    const int row = edit.Rows().FindRow(name);
    if (row == 0) continue;
    add(edit.Rows().Text(row, Column::description), edit.Value(name),
        edit.Rows().Text(row, Column::unit));
  }
  add("A", edit.Value("Pn203"));
  add("B", edit.Value("Pn202"));
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

bool SetSystem(clsHX7Project& project, const std::vector<Assignment>& assignments) {
  MachineEdit edit(project.MechanicalSystem());
  const std::string words = CarryAll(edit, assignments);
  if (!words.empty()) {
    ShowExclamation(words);
    return false;
  }
  const MachineCheck units = edit.ValidateUnits();
  const MachineFigures figures = edit.Figures();
  if (!units.Accepted() || !figures.valid) {
    ShowExclamation(units.Accepted() ? figures.reason
                                     : units.words.substr(0, units.words.find('\r')));
    return false;
  }
  const std::string corrected = edit.ValidateProperties();
  if (!corrected.empty()) ShowInformation(corrected);
  if (!edit.IsDirty()) return true;
  const std::string question = edit.CommitQuestion();
  if (!question.empty()) {
    // Whoever types the command has decided; only data that would be lost takes an agreement more.
    const bool discards = edit.ResolutionDirty() && edit.SystemDirty() && HoldsProgramme(project);
    if (!discards) {
      ShowInformation(question.substr(0, question.rfind("\r\r")));
    } else if (!AskOkCancel(question)) {
      ShowInformation("Commit data change has been canceled.  Say --yes to agree.");
      return false;
    }
  }
  const std::string information = edit.CommitInformation();
  if (!information.empty()) ShowInformation(information);
  project.MechanicalSystem().ChangeAccepted(edit.TakeForCommit());
  return true;
}

}  // namespace velmoor
