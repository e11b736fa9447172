// What of the project goes to the amplifier, in which order, and what comes back.

#include <algorithm>

#include "link/CommandWords.h"
#include "link/clsHX7Helix7.h"
#include "platform/Events.h"
#include "platform/Numbers.h"
#include "project/clsHX7Project.h"
#include "session/Session.h"

namespace velmoor {

struct clsHX7Project::DirtyTool {
  bool isDirty;
  std::function<bool()> download;
  std::function<void()> clear;
  bool isParameterTool;
};

namespace {

SimpleCommand StoreOf(Tool table) {
  if (table == Tool::jog) return SimpleCommand::jogStore;
  return table == Tool::zone ? SimpleCommand::zoneStore : SimpleCommand::indexStore;
}

bool StoreTable(Tool table) {
  const auto command = static_cast<std::int32_t>(StoreOf(table));
  return gMainForm->Helix7()->SaveTablesToMemory(command) == kSuccess;
}

}  // namespace

bool clsHX7Project::DownloadTable(Tool table, bool blnOverRide) {
  MotionTable* const found = TableOf(table);
  if (found == nullptr) return false;
  MotionTable& rows = *found;
  const std::vector<int> pending = RowsToSend(rows, blnOverRide);
  const bool stored = rows.Download(blnOverRide) && StoreTable(table);
  // What was acknowledged and not stored is lost when the amplifier restarts.
  if (!stored) MarkRows(rows, pending);
  return stored;
}

std::vector<clsHX7Project::DirtyTool> clsHX7Project::DownloadOrder() {
  std::vector<DirtyTool> order;
  const auto add = [&order](auto& tool, std::function<bool()> download, bool isParameterTool) {
    order.push_back({tool.IsDirty(), std::move(download), [&tool] { tool.SetIsDirty(false); },
                     isParameterTool});
  };
  add(
      clsPosition_, [this] { return DownloadTable(Tool::position, false); }, false);
  add(
      clsJog_, [this] { return DownloadTable(Tool::jog, false); }, false);
  add(
      clsZone_, [this] { return DownloadTable(Tool::zone, false); }, false);
  add(
      clsEditor_, [this] { return clsEditor_.Download(false); }, true);
  add(
      clsMechanicalSystem_, [this] { return clsMechanicalSystem_.Download(false); }, true);
  add(
      clsTuning_, [this] { return clsTuning_.Download(false); }, true);
  add(
      clsFlexibleIO_, [this] { return clsFlexibleIO_.Download(); }, true);
  add(
      clsHoming_, [this] { return clsHoming_.Download(); }, true);
  add(
      clsInterface_, [this] { return clsInterface_.Download(); }, true);
  add(
      clsOverTravel_, [this] { return clsOverTravel_.Download(); }, true);
  return order;
}

void clsHX7Project::MarkAfterStrayWrite() {
  if (!gMainForm->Helix7()->TakeStrayWrite()) return;
  MarkEverything();
  // The marks are to outlive the session.
  blnNeedsSaving_ = true;
}

bool clsHX7Project::Download() {
  MarkAfterStrayWrite();
  const bool done = SendNew();
  MarkAfterStrayWrite();
  return done;
}

bool clsHX7Project::SendNew() {
  bool downloadedItem = false;
  for (DirtyTool& tool : DownloadOrder()) {
    if (!tool.isDirty) continue;
    if (!tool.download()) return false;
    tool.clear();
    downloadedItem = downloadedItem || tool.isParameterTool;
    YieldEvents();
  }
  // Tables alone restart nothing; parameters take effect only after the restart, whose result is
  // not examined.
  if (downloadedItem) (void)gMainForm->Helix7()->ResetHardware();
  SettleSentRows();
  blnIsDirty_ = false;
  DownloadComplete.Raise();
  return true;
}

bool clsHX7Project::DownloadAll() {
  MarkEverything();
  const bool done = SendEverything();
  MarkAfterStrayWrite();
  // The marks of what did not go out are to outlive the session.
  if (!done) blnNeedsSaving_ = true;
  return done;
}

bool clsHX7Project::SendEverything() {
  const auto steps = std::initializer_list<std::function<bool()>>{
      [this] { return DownloadWholeTable(Tool::position); },
      [this] { return DownloadWholeTable(Tool::jog); },
      [this] { return DownloadWholeTable(Tool::zone); },
      [this] { return clsEditor_.Download(true); },
      [this] { return clsMechanicalSystem_.Download(true); },
      [this] { return clsTuning_.PerformRigidityChange() == kSuccess; },
      [] { return gMainForm->Helix7()->ResetHardware() == kSuccess; },
  };
  for (const auto& step : steps) {
    if (!step()) return false;
    YieldEvents();
  }
  if (clsTuning_.ChangedRigidity()) {
    clsTuning_.SetChangedRigidity(false);
    RigidityChanged.Raise();
  }
  ResetAllIsDirty();
  SettleSentRows();
  DownloadComplete.Raise();
  return true;
}

// Edits of sister tools may have gone out with a tool's rows.
void clsHX7Project::SettleSentRows() {
  for (ParameterToolBase* const tool : ParameterTools()) tool->SettleSentRows();
}

bool clsHX7Project::DownloadPart(Tool part) {
  if (TableOf(part) != nullptr) return DownloadWholeTable(part);
  if (part == Tool::mechanicalSystem) {
    MarkParameters(IsMechSystemPn);
    clsMechanicalSystem_.SetIsDirty(true);
    return clsMechanicalSystem_.Download(true);
  }
  ParameterToolBase& tool = *ParameterToolOf(part);
  MarkParameters([&tool](const std::string& strPn) {
    return !IsMechSystemPn(strPn) && tool.Rows().FindRow(strPn) > 0;
  });
  tool.SetIsDirty(true);
  return tool.DownloadWhole();
}

bool clsHX7Project::DownloadParts(const std::vector<Tool>& parts) {
  const bool done = SendParts(parts);
  MarkAfterStrayWrite();
  return done;
}

bool clsHX7Project::SendParts(const std::vector<Tool>& parts) {
  bool restart = false;
  for (const Tool part : parts) {
    if (!DownloadPart(part)) {
      blnNeedsSaving_ = true;
      return false;
    }
    // Gains are in force at once.
    restart = restart || (TableOf(part) == nullptr && part != Tool::tuning);
    YieldEvents();
  }
  // Until here the parameters count as not in force.
  if (restart && gMainForm->Helix7()->ResetHardware() != kSuccess) return false;
  for (const Tool part : parts) {
    if (part == Tool::mechanicalSystem) clsMechanicalSystem_.SetIsDirty(false);
  }
  SettleSentRows();
  DownloadComplete.Raise();
  return true;
}

std::int16_t clsHX7Project::GetNumberOfNewDownloads() const {
  const int sum = clsPosition_.GetNumberOfNewRows() + clsJog_.GetNumberOfNewRows() +
                  clsZone_.GetNumberOfNewRows() + clsEditor_.GetNumberOfNewRows() +
                  clsMechanicalSystem_.GetNumberOfNewRows();
  return Narrow<std::int16_t>(sum);
}

// ---- uploads

void clsHX7Project::TakeSnapshot() {
  snapshots_ = Snapshots{};
  snapshots_->machine = clsMechanicalSystem_.TakeSnapshot();
  for (const ParameterToolBase* const tool : ParameterTools()) {
    snapshots_->parameterTools.push_back(tool->TakeSnapshot());
  }
  for (const MotionTable* const table : Tables())
    snapshots_->tables.push_back(table->TakeSnapshot());
  snapshots_->units = PresentUnits();
  snapshots_->isDirty = blnIsDirty_;
  snapshots_->needsSaving = blnNeedsSaving_;
}

// The machine first: the others are shown in its units.
void clsHX7Project::RestoreSnapshot() {
  if (!snapshots_) return;
  clsMechanicalSystem_.CommitUploadedData(false);
  clsMechanicalSystem_.RestoreSnapshot(snapshots_->machine);
  std::size_t i = 0;
  for (ParameterToolBase* const tool : ParameterTools()) {
    tool->CommitUploadedData(false);
    tool->RestoreSnapshot(snapshots_->parameterTools[i++]);
  }
  i = 0;
  for (MotionTable* const table : Tables()) {
    table->CommitUploadedData(false);
    table->RestoreSnapshot(snapshots_->tables[i++]);
  }
  blnIsDirty_ = snapshots_->isDirty;
  blnNeedsSaving_ = snapshots_->needsSaving;
  snapshots_.reset();
}

void clsHX7Project::CommitUploadedData() {
  snapshots_.reset();
  blnNeedsSaving_ = true;
  for (ParameterToolBase* const tool :
       std::initializer_list<ParameterToolBase*>{&clsTuning_, &clsFlexibleIO_, &clsHoming_,
                                                 &clsInterface_, &clsOverTravel_, &clsEditor_}) {
    tool->CommitUploadedData(true);
  }
  clsMechanicalSystem_.CommitUploadedData(true);
  for (const Tool table : {Tool::position, Tool::jog, Tool::zone}) CommitUploadedTable(table);
}

int clsHX7Project::RowsOf(Tool part) {
  if (const MotionTable* const table = TableOf(part)) return table->RowsInArray();
  if (const ParameterToolBase* const tool = ParameterToolOf(part)) return tool->RowsInArray();
  return clsMechanicalSystem_.NumPns();
}

bool clsHX7Project::UploadPart(Tool part) {
  if (MotionTable* const table = TableOf(part)) return table->Upload();
  if (ParameterToolBase* const tool = ParameterToolOf(part)) return tool->Upload();
  const bool read = clsMechanicalSystem_.Upload();
  if (snapshots_) snapshots_->machineUnread = !read;
  return read;
}

bool clsHX7Project::UploadParts(const std::vector<Tool>& parts) {
  TakeSnapshot();
  const bool all = std::ranges::all_of(parts, [this](Tool part) { return UploadPart(part); });
  if (!all) RestoreSnapshot();
  return all;
}

void clsHX7Project::CommitUploadedParts(const std::vector<Tool>& parts) {
  for (const Tool part : parts) CommitUploadedTool(part);
}

// After a download that ended without its store the amplifier answers with rows that its next loss
// of power takes: the project is to offer them.
void clsHX7Project::CommitUploadedTable(Tool table) {
  MotionTable& committed = *TableOf(table);
  committed.CommitUploadedData(true);
  if (gMainForm->Helix7()->IsUnstored(StoreOf(table))) {
    MarkRows(committed, RowsToSend(committed, true));
  }
}

void clsHX7Project::CommitUploadedTool(Tool tool) {
  snapshots_.reset();
  blnNeedsSaving_ = true;
  if (ParameterToolBase* const committed = ParameterToolOf(tool)) {
    committed->CommitUploadedData(true);
    for (ParameterToolBase* const sister : ParameterTools()) {
      if (sister != committed) sister->SettleStoredRows();
    }
  } else if (TableOf(tool) != nullptr) {
    CommitUploadedTable(tool);
  } else {
    clsMechanicalSystem_.CommitUploadedData(true);
  }
}

}  // namespace velmoor
