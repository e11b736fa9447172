// A change of the machine, or an upload, as one step over all that the project holds: planned,
// shown from that plan, and committed whole.

#include <algorithm>

#include "link/CommandWords.h"
#include "link/clsHX7Helix7.h"
#include "platform/Trapped.h"
#include "project/StoreCommands.h"
#include "project/clsHX7Project.h"
#include "project/data/Schema.h"
#include "session/Session.h"

namespace velmoor {

namespace {

void Append(std::vector<RescaledValue>& values, const std::vector<RescaledValue>& more) {
  values.insert(values.end(), more.begin(), more.end());
}

bool LimitsValuesOf(const ParameterStep& step, Tool owner) {
  return std::ranges::any_of(step.limited,
                             [owner](const auto& limited) { return limited.second == owner; });
}

}  // namespace

ProjectPlan clsHX7Project::PlanMachine(const MachineChange& change) const {
  const Units& before = PresentUnits();
  ProjectPlan plan;
  plan.after = change.to.ShownUnits();
  plan.parameters = StepParameters(parameters_, change);
  const bool discards = DiscardsData(DescribeMachine(parameters_), change.to);
  const auto step = [&](const MotionTable& table, Tool tool) {
    const ToolInfo& info = InfoOf(tool);
    return table.Rescaled(before, plan.after, std::string(info.place), info.firstRow);
  };
  plan.position = discards ? clsPosition_.Emptied() : step(clsPosition_, Tool::position);
  plan.zone = discards ? clsZone_.Emptied() : step(clsZone_, Tool::zone);
  plan.jog = step(clsJog_, Tool::jog);
  return plan;
}

// The data sets in which a limit replaced a value; the editor's have no name of their own.
std::vector<std::string> clsHX7Project::LimitedSets(const ProjectPlan& plan) {
  std::vector<std::string> sets;
  const auto add = [&sets](bool limited, Tool tool) {
    if (limited) sets.emplace_back(InfoOf(tool).limited);
  };
  add(plan.position.limited, Tool::position);
  add(plan.jog.limited, Tool::jog);
  add(plan.zone.limited, Tool::zone);
  for (const Tool tool : {Tool::homing, Tool::overTravel, Tool::editor}) {
    add(LimitsValuesOf(plan.parameters, tool), tool);
  }
  return sets;
}

MachineConsequences clsHX7Project::Consequences(const MachineChange& change) const {
  const ProjectPlan plan = PlanMachine(change);
  MachineConsequences consequences;
  Append(consequences.values, plan.position.values);
  Append(consequences.values, plan.zone.values);
  Append(consequences.values, plan.jog.values);
  Append(consequences.values, plan.parameters.values);
  consequences.limited = LimitedSets(plan);
  if (plan.position.emptied) consequences.emptied.emplace_back("The index table");
  if (plan.zone.emptied) consequences.emptied.emplace_back("The zone table");
  return consequences;
}

void clsHX7Project::CommitMachine(const MachineChange& change) {
  Commit(PlanMachine(change), false);
}

// Parameters and tables in one transaction.
ParameterChanges clsHX7Project::Write(const ProjectPlan& plan) {
  ParameterChanges completed = parameters_.Completed(plan.parameters.changes);
  const auto database = OpenForWriting(strProjectDatabasePath_);
  try {
    parameters_.Write(*database, completed);
    clsPosition_.Write(*database, plan.position);
    clsZone_.Write(*database, plan.zone);
    clsJog_.Write(*database, plan.jog);
    database->Commit();
  } catch (...) {
    database->Rollback();
    throw;
  }
  blnNeedsSaving_ = true;
  return completed;
}

void clsHX7Project::CommitTyped(const ProjectPlan& plan) {
  parameters_.TakeTyped(Write(plan), plan.parameters.changes);
  clsPosition_.TakeTyped(plan.position);
  clsZone_.TakeTyped(plan.zone);
  clsJog_.TakeTyped(plan.jog);
  for (MotionTable* const table : Tables()) table->UpdateUnitsDisplayed();
}

// The program's truth follows the file's.
void clsHX7Project::Commit(const ProjectPlan& plan, bool uploaded) {
  parameters_.Take(Write(plan));
  std::string limitedEdits;
  const auto name = [&limitedEdits](std::string_view place) {
    limitedEdits += (limitedEdits.empty() ? "" : ", ") + std::string(place);
  };
  const auto take = [&](Tool tool, MotionTable& table, const MotionTable::Step& step) {
    if (uploaded && table.HoldsUpload()) {
      table.TakeUpload(step, plan.after);
    } else if (table.Take(step, plan.after)) {
      name(InfoOf(tool).item);
    }
    table.UpdateUnitsDisplayed();
  };
  take(Tool::position, clsPosition_, plan.position);
  take(Tool::zone, clsZone_, plan.zone);
  take(Tool::jog, clsJog_, plan.jog);
  for (ParameterToolBase* const tool : ParameterTools()) {
    for (const std::string& strPn : tool->TakeLimitedEdits()) name(strPn);
  }
  const std::vector<std::string> sets = LimitedSets(plan);
  std::string items;
  for (const std::string& set : sets) {
    if (!set.empty()) items += (items.empty() ? "" : ", ") + set;
  }
  // Raised also when only the editor was concerned, whose name the list does not hold.
  if (!sets.empty()) ResolutionDataInvalidated.Raise(items);
  if (!limitedEdits.empty()) {
    ShowExclamation("Edits that were not applied yet were out of range and have been corrected:\r" +
                    limitedEdits + "\r\rPlease check values before proceeding.");
  }
}

// ---- uploads

void clsHX7Project::BeginUpload() {
  DropUpload();
}

bool clsHX7Project::HoldsUpload() const {
  return !parameters_.Staged().empty() ||
         std::ranges::any_of(Tables(),
                             [](const MotionTable* table) { return table->HoldsUpload(); });
}

void clsHX7Project::DropUpload() {
  parameters_.DropAllStaged();
  for (MotionTable* const table : Tables()) table->DropUpload();
  machineUnread_ = false;
  readParts_.clear();
}

bool clsHX7Project::UploadPart(Tool part) {
  const bool read = ReadPart(part);
  if (read) readParts_.push_back(part);
  return read;
}

bool clsHX7Project::ReadPart(Tool part) {
  if (MotionTable* const table = TableOf(part)) return table->Upload();
  if (ParameterToolBase* const tool = ParameterToolOf(part)) return tool->Upload();
  machineUnread_ = !clsMechanicalSystem_.Upload();
  return !machineUnread_;
}

bool clsHX7Project::UploadParts(const std::vector<Tool>& parts) {
  BeginUpload();
  const bool all = std::ranges::all_of(parts, [this](Tool part) { return UploadPart(part); });
  if (!all) DropUpload();
  return all;
}

// After a download that ended without its store the amplifier answers with rows that its next loss
// of power takes: the project is to offer them.
MotionTable::Step clsHX7Project::UploadStepOf(const MotionTable& table, Tool tool,
                                              const Units& after) const {
  if (!table.HoldsUpload()) return table.Rescaled(PresentUnits(), after, {}, 0);
  return table.UploadStep(after, gMainForm->Helix7()->IsUnstored(StoreCommandOf(tool)));
}

ProjectPlan clsHX7Project::PlanUpload() const {
  ProjectPlan plan;
  plan.parameters.changes = parameters_.StagedChanges();
  plan.after = parameters_.UnitsAfter(plan.parameters.changes);
  KeepNumbers(parameters_, plan.after, plan.parameters.changes, plan.parameters.limited);
  plan.position = UploadStepOf(clsPosition_, Tool::position, plan.after);
  plan.zone = UploadStepOf(clsZone_, Tool::zone, plan.after);
  plan.jog = UploadStepOf(clsJog_, Tool::jog, plan.after);
  return plan;
}

bool clsHX7Project::CommitUpload() {
  const bool stored = Trapped("clsProject.CommitUploadedData: ", [this] {
    Commit(PlanUpload(), true);
    return true;
  });
  if (stored) NoteRead();
  DropUpload();
  return stored;
}

}  // namespace velmoor
