// What of the project goes to the amplifier, and in which order.

#include <algorithm>
#include <functional>

#include "link/CommandWords.h"
#include "link/clsHX7Helix7.h"
#include "platform/Events.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "project/StoreCommands.h"
#include "project/clsHX7Project.h"
#include "session/Session.h"

namespace velmoor {

struct clsHX7Project::DirtyTool {
  bool isDirty;
  std::function<bool()> download;
  bool isParameterTool;
};

namespace {

bool StoreTable(Tool table) {
  const auto command = static_cast<std::int32_t>(StoreCommandOf(table));
  return gMainForm->Helix7()->SaveTablesToMemory(command) == kSuccess;
}

std::vector<int> RowsToSend(const MotionTable& table, bool all) {
  std::vector<int> rows;
  for (int row = 1; row <= table.RowsInArray(); ++row) {
    if (all || table.Stored(row).marked) rows.push_back(row);
  }
  return rows;
}

// The values of one row that travel.
int FieldsOf(const TableLayout& layout) {
  return static_cast<int>(std::ranges::count_if(
      layout.columns, [](const TableColumn& column) { return !SentField(column).empty(); }));
}

}  // namespace

bool clsHX7Project::DownloadTable(Tool table, bool blnOverRide) {
  MotionTable* const found = TableOf(table);
  if (found == nullptr) return false;
  const std::vector<int> pending = RowsToSend(*found, blnOverRide);
  const bool stored = found->Download(blnOverRide) && IsAsWritten() && StoreTable(table);
  if (stored) {
    found->ConfirmStored();
  } else {
    // What was acknowledged and not stored is lost when the amplifier restarts.
    found->Mark(pending);
  }
  return stored;
}

std::vector<clsHX7Project::DirtyTool> clsHX7Project::DownloadOrder() {
  std::vector<DirtyTool> order;
  const auto add = [&](Tool tool, std::function<bool()> download) {
    order.push_back({IsDirty(tool), std::move(download), TableOf(tool) == nullptr});
  };
  for (const Tool table : {Tool::position, Tool::jog, Tool::zone}) {
    add(table, [this, table] { return DownloadTable(table, false); });
  }
  add(Tool::editor, [this] { return clsEditor_.Download(false); });
  add(Tool::mechanicalSystem, [this] { return clsMechanicalSystem_.Download(false); });
  add(Tool::tuning, [this] { return clsTuning_.Download(false); });
  add(Tool::flexibleIO, [this] { return clsFlexibleIO_.Download(); });
  add(Tool::homing, [this] { return clsHoming_.Download(); });
  add(Tool::interface, [this] { return clsInterface_.Download(); });
  add(Tool::overTravel, [this] { return clsOverTravel_.Download(); });
  return order;
}

bool clsHX7Project::Restart() {
  const ResultCode result = gMainForm->Helix7()->ResetHardware();
  latestRestart_ = result == kSuccess  ? RestartOutcome::sent
                   : IsRefusal(result) ? RestartOutcome::refused
                                       : RestartOutcome::unknown;
  return result == kSuccess;
}

void clsHX7Project::MarkAfterStrayWrite() {
  if (!gMainForm->Helix7()->TakeStrayWrite()) return;
  MarkEverything();
  // The marks are to outlive the session.
  blnNeedsSaving_ = true;
}

bool clsHX7Project::RunDownload(const std::function<void()>& mark,
                                const std::function<bool()>& send) {
  if (IsReadOnly()) {
    ShowExclamation(
        ReadOnlyWords("It may hold what this version does not know, so it cannot be downloaded."));
    return false;
  }
  if (!MayDownload()) return false;
  mark();
  const std::vector<Tool> marked = MarkedTools();
  if (!BeginDownload()) return false;
  const bool done = send();
  NoteSent(marked);
  EndDownload();
  return done;
}

bool clsHX7Project::Download() {
  return RunDownload([this] { MarkAfterStrayWrite(); }, [this] { return SendNew(); });
}

bool clsHX7Project::SendNew() {
  bool downloadedItem = false;
  for (const DirtyTool& tool : DownloadOrder()) {
    if (!tool.isDirty) continue;
    if (!tool.download()) return false;
    downloadedItem = downloadedItem || tool.isParameterTool;
    YieldEvents();
  }
  if (!IsAsWritten()) return false;
  // Tables alone restart nothing; parameters take effect only after the restart. They are in the
  // amplifier all the same.
  if (downloadedItem) (void)Restart();
  DownloadComplete.Raise();
  return true;
}

bool clsHX7Project::DownloadAll() {
  return RunDownload([this] { MarkEverything(); }, [this] { return SendEverything(); });
}

bool clsHX7Project::SendEverything() {
  const auto steps = std::initializer_list<std::function<bool()>>{
      [this] { return DownloadTable(Tool::position, true); },
      [this] { return DownloadTable(Tool::jog, true); },
      [this] { return DownloadTable(Tool::zone, true); },
      [this] { return clsEditor_.Download(true); },
      [this] { return clsMechanicalSystem_.Download(true); },
      [this] { return IsAsWritten() && clsTuning_.PerformRigidityChange() == kSuccess; },
      [this] { return Restart(); },
  };
  for (const auto& step : steps) {
    if (!step()) return false;
    YieldEvents();
  }
  if (clsTuning_.ChangedRigidity()) {
    clsTuning_.SetChangedRigidity(false);
    RigidityChanged.Raise();
  }
  DownloadComplete.Raise();
  return true;
}

bool clsHX7Project::DownloadPart(Tool part) {
  if (TableOf(part) != nullptr) return DownloadTable(part, true);
  if (part == Tool::mechanicalSystem) return clsMechanicalSystem_.Download(true);
  return ParameterToolOf(part)->DownloadWhole();
}

bool clsHX7Project::DownloadParts(const std::vector<Tool>& parts) {
  const auto mark = [this, &parts] {
    for (const Tool part : parts) MarkPart(part);
  };
  return RunDownload(mark, [this, &parts] { return SendParts(parts); });
}

bool clsHX7Project::SendParts(const std::vector<Tool>& parts) {
  bool restart = false;
  for (const Tool part : parts) {
    if (!DownloadPart(part)) return false;
    // Gains are in force at once.
    restart = restart || (TableOf(part) == nullptr && part != Tool::tuning);
    YieldEvents();
  }
  if (!IsAsWritten()) return false;
  // Until here the parameters count as not in force.
  if (restart && !Restart()) return false;
  DownloadComplete.Raise();
  return true;
}

std::int16_t clsHX7Project::GetNumberOfNewDownloads() const {
  const int sum = clsPosition_.GetNumberOfNewRows() + clsJog_.GetNumberOfNewRows() +
                  clsZone_.GetNumberOfNewRows() + clsEditor_.GetNumberOfNewRows() +
                  clsMechanicalSystem_.GetNumberOfNewRows();
  return Narrow<std::int16_t>(sum);
}

int clsHX7Project::ValuesOf(Tool part, bool all) {
  const MotionTable* const table = TableOf(part);
  if (table == nullptr) {
    const ParameterToolBase* const tool = ParameterToolOf(part);
    if (all) return RowsOf(part);
    return tool != nullptr ? tool->GetNumberOfNewRows() : clsMechanicalSystem_.GetNumberOfNewRows();
  }
  const auto rows = RowsToSend(*table, all).size();
  return static_cast<int>(rows) * FieldsOf(table->Layout());
}

int clsHX7Project::RowsOf(Tool part) {
  if (const MotionTable* const table = TableOf(part)) return table->RowsInArray();
  if (const ParameterToolBase* const tool = ParameterToolOf(part)) return tool->RowsInArray();
  return clsMechanicalSystem_.NumPns();
}

}  // namespace velmoor
