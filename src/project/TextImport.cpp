#include "project/TextImport.h"

#include <algorithm>
#include <array>

#include "mechanics/MachineKeys.h"
#include "platform/Bounds.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/VisibleText.h"
#include "platform/World.h"
#include "project/ProjectText.h"
#include "project/TextValues.h"
#include "project/clsHX7Project.h"
#include "project/data/MotorLimits.h"

namespace velmoor {
namespace project_text {

void Faults::Add(int line, const std::string& words) {
  faults_.push_back({line, Shortened(VisibleText(OneLine(words)), bounds::kFaultText)});
}

std::vector<std::string> Faults::Told(const std::string& name) const {
  std::vector<Fault> sorted = faults_;
  std::ranges::stable_sort(sorted, {}, &Fault::line);
  std::vector<std::string> told;
  for (const Fault& fault : sorted) {
    if (told.size() == bounds::kFaultsTold) {
      told.push_back("and " + NumberText(sorted.size() - told.size()) + " more");
      break;
    }
    told.push_back(name + ":" + NumberText(fault.line) + ": " + fault.words);
  }
  return told;
}

std::span<const KeyedEntry> EntriesOf(const KeyedNode* section, std::string_view name,
                                      Faults& faults) {
  if (section == nullptr) return {};
  if (section->kind == KeyedNode::Kind::table) return section->entries;
  faults.Add(section->line,
             "'" + std::string(name) + "' is a section: [" + std::string(name) + "] and its lines");
  return {};
}

namespace {

using Kind = KeyedNode::Kind;

// ---- what stands above the sections

void JudgeHead(const KeyedNode& text, Judged& judged, Faults& faults) {
  static constexpr std::array<std::string_view, 8> kNames{
      kFormatKey, kOthersKey, kMachine, kParameters, "index", "zone", "jog", kAsFound};
  for (const KeyedEntry& entry : text.entries) {
    if (std::ranges::find(kNames, entry.key) == kNames.end()) {
      faults.Add(entry.value.line, "'" + entry.key +
                                       "' is none of format, others, machine, parameters, index, "
                                       "zone, jog and as-found");
    }
  }
  const KeyedNode* const format = text.Find(kFormatKey);
  if (format != nullptr && (format->kind != Kind::whole || format->text != NumberText(kFormat))) {
    faults.Add(format->line, "The text is of format " + format->text +
                                 ", and this version of Velmoor reads format " +
                                 NumberText(kFormat));
  }
  const KeyedNode* const others = text.Find(kOthersKey);
  if (others == nullptr) return;
  judged.whole = others->text == kOthersDefault;
  if (others->kind != Kind::text || (!judged.whole && others->text != kOthersKept)) {
    faults.Add(others->line, "'others' is \"default\" or \"kept\"");
  }
}

// ---- the machine

bool Fits(const MachineKey& key, Kind kind) {
  switch (key.form) {
    case MachineKey::Form::choice:
    case MachineKey::Form::word:
      return kind == Kind::text;
    case MachineKey::Form::number:
      return kind == Kind::whole || kind == Kind::number;
    default:
      return kind == Kind::whole;
  }
}

std::string TypeOf(const MachineKey& key) {
  if (key.form == MachineKey::Form::number) return "a number";
  return Fits(key, Kind::text) ? "a text in quotes" : "a whole number";
}

void JudgeMachineNames(std::span<const KeyedEntry> entries, Faults& faults) {
  for (const KeyedEntry& entry : entries) {
    if (entry.key == kMotor || MachineKeyNamed(entry.key) != nullptr) continue;
    faults.Add(entry.value.line, "'" + entry.key +
                                     "' is none of system, encoder, units, time, measure, n1, n2, "
                                     "resolution and motor");
  }
}

class MachineJudge {
 public:
  MachineJudge(clsHX7Project& project, const KeyedNode& text, Faults& faults)
      : project_(project), section_(text.Find(kMachine)), faults_(faults) {
    JudgeMachineNames(EntriesOf(section_, kMachine, faults), faults);
  }

  // Its limits hold from now on, until somebody puts those of the project back.
  void TakeMotor(Judged& judged) {
    const KeyedNode* const motor = section_ != nullptr ? section_->Find(kMotor) : nullptr;
    if (motor == nullptr) return;
    judged.motor = motor->kind == Kind::whole ? CheckedMotorSize(motor->text) : std::string();
    if (judged.motor.empty()) {
      faults_.Add(motor->line, "motor takes a whole number of watts from 1 to 65535");
      return;
    }
    project_.UseLimitsOf(judged.motor);
  }

  void Judge(const NewProject& newProject, Judged& judged) {
    MachineEdit edit = project_.MechanicalSystem().Edit();
    const MachineDescription usual = newProject.Machine();
    const MachineDescription before = project_.MechanicalSystem().Description();
    bool alone = true;  // each value, judged alone
    for (const MachineKey& key : MachineKeys()) {
      const KeyedNode* const given = section_ != nullptr ? section_->Find(key.name) : nullptr;
      if (given == nullptr && !judged.whole) continue;
      if (given != nullptr && !Fits(key, given->kind)) {
        faults_.Add(given->line, std::string(key.name) + " takes " + TypeOf(key));
        alone = false;
        continue;
      }
      const std::string text = given != nullptr ? given->text : ValueOf(usual, key);
      const std::string words = text == ValueOf(before, key) ? "" : Assign(edit, key, text);
      if (words.empty()) continue;
      faults_.Add(given != nullptr ? given->line : 1, std::string(key.name) + ": " + words);
      alone = false;
    }
    const MachineFigures figures = edit.Figures();
    judged.machine = edit.IsDirty();
    if (alone && judged.machine && !figures.valid) {
      faults_.Add(section_ != nullptr ? section_->line : 1, figures.reason);
    }
    judged.plan = PlanOf(edit, figures, judged.whole);
  }

 private:
  // Everything as it is where nothing changes; a whole text brings the machine's own gear terms.
  ProjectPlan PlanOf(const MachineEdit& edit, const MachineFigures& figures, bool whole) const {
    MachineChange change = edit.Wanted();
    if (whole && figures.valid) change.ratio = figures.ratio;
    return project_.PlanMachine(change);
  }

  clsHX7Project& project_;
  const KeyedNode* section_;
  Faults& faults_;
};

// A change of the machine empties tables that the text leaves as they are.
bool AgreesToEmpty(clsHX7Project& project, const Judged& judged) {
  const bool emptied = judged.plan.position.emptied || judged.plan.zone.emptied;
  return judged.whole || !emptied ||
         AskOkCancel("The machine of the text empties the index table and the zone table of " +
                     project.FileTitle() + "!\r\rDo you wish to accept the change?");
}

bool Commit(clsHX7Project& project, const Judged& judged) {
  return Trapped("clsProject.ImportText: ", [&] {
    project.CommitTyped(judged.plan);
    project.SetMotorSize(judged.motor);
    return true;
  });
}

}  // namespace
}  // namespace project_text

std::vector<std::string> ImportText(clsHX7Project& project, std::string_view text,
                                    const std::string& name) {
  using namespace project_text;
  Faults faults;
  Judged judged;
  try {
    const KeyedNode root = world().keyedTexts->Read(text);
    JudgeHead(root, judged, faults);
    const NewProject newProject;
    MachineJudge machine(project, root, faults);
    machine.TakeMotor(judged);
    machine.Judge(newProject, judged);
    JudgeParameters(project, newProject, root, judged, faults);
    JudgeTables(project, root, judged, faults);
  } catch (const KeyedTextError& error) {
    faults.Add(error.Line(), error.what());
  }
  std::vector<std::string> told = faults.Told(name);
  if (told.empty() && !(AgreesToEmpty(project, judged) && Commit(project, judged))) {
    told.push_back(name + ": Nothing was changed");
  }
  if (!told.empty() && !judged.motor.empty()) project.UseLimitsOf(project.MotorSize());
  return told;
}

}  // namespace velmoor
