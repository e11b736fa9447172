// How far each tool of the project is: what is marked, what was sent or read, what is as new.

#include <algorithm>

#include "platform/Events.h"
#include "platform/Files.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "project/TransferRecord.h"
#include "project/clsHX7Project.h"
#include "project/data/Schema.h"

namespace velmoor {

using schema::Parameters;

bool clsHX7Project::Shows(Tool tool, const std::string& strPn) {
  const ParameterToolBase* const parameters = ParameterToolOf(tool);
  return parameters != nullptr ? parameters->FindRow(strPn) > 0 : IsMechSystemPn(strPn);
}

int clsHX7Project::MarkedOf(Tool tool) {
  if (const MotionTable* const table = TableOf(tool)) return table->GetNumberOfNewRows();
  int marked = 0;
  for (int place = 0; place < parameters_.Count(); ++place) {
    const Parameter& parameter = parameters_.At(place);
    if (parameter.IsMarked() && !parameter.blank && Shows(tool, parameter.Pn())) ++marked;
  }
  return marked;
}

bool clsHX7Project::IsAsNew(Tool tool) {
  if (const MotionTable* const table = TableOf(tool)) {
    for (int row = 1; row <= table->RowsInArray(); ++row) {
      if (!table->IsBlank(row)) return false;
    }
    return true;
  }
  if (newValues_.empty()) {
    const auto pattern = OpenForReading(JoinPath(world().appDirectory, "Velmoor.spt"));
    const auto records = pattern->OpenTable(Parameters::kTable);
    for (records->MoveFirst(); !records->AtEnd(); records->MoveNext()) {
      newValues_[records->Text(Parameters::kPn)] = records->Text(Parameters::kControllerValue);
    }
  }
  for (int place = 0; place < parameters_.Count(); ++place) {
    const Parameter& parameter = parameters_.At(place);
    const auto fresh = newValues_.find(parameter.Pn());
    const bool other = fresh != newValues_.end() && fresh->second != parameter.controller;
    if (other && Shows(tool, parameter.Pn())) return false;
  }
  return true;
}

// ---- what was sent and read

std::optional<LastTransfer> clsHX7Project::TransferOf(Tool tool) const {
  const auto known = transfers_.find(tool);
  return known == transfers_.end() ? std::nullopt : std::optional(known->second);
}

void clsHX7Project::ReadTransfers() {
  const auto database = OpenForReading(strProjectDatabasePath_);
  for (const ToolInfo& info : velmoor::Tools()) {
    if (auto transfer = TransferIn(*database, info.tool)) transfers_[info.tool] = *transfer;
  }
}

std::vector<Tool> clsHX7Project::MarkedTools() {
  std::vector<Tool> marked;
  for (const ToolInfo& info : velmoor::Tools()) {
    if (MarkedOf(info.tool) > 0) marked.push_back(info.tool);
  }
  return marked;
}

void clsHX7Project::NoteSent(const std::vector<Tool>& marked) {
  const std::string now = MomentText(world().clock->Now());
  for (const Tool tool : marked) {
    if (MarkedOf(tool) > 0) continue;
    transfers_[tool] = {true, now};
    if (std::ranges::find(sent_, tool) == sent_.end()) sent_.push_back(tool);
  }
}

// Of a commit that was made already: a file that cannot take the moment loses nothing else.
void clsHX7Project::NoteRead() {
  std::vector<Tool> tools = readParts_;
  // It holds the parameters of the others.
  if (std::ranges::find(tools, Tool::editor) != tools.end()) {
    tools.insert(tools.end(), kParameterTools.begin(), kParameterTools.end());
  }
  const std::string now = MomentText(world().clock->Now());
  Trapped("clsProject.NoteRead: ", [&] {
    const auto database = OpenForWriting(strProjectDatabasePath_);
    for (const Tool tool : tools) (void)PutTransfer(*database, tool, {false, now});
    database->Commit();
    return true;
  });
  for (const Tool tool : tools) {
    transfers_[tool] = {false, now};
    std::erase(sent_, tool);
  }
  if (!tools.empty()) blnNeedsSaving_ = true;
}

}  // namespace velmoor
