// The commands that move a project, whole or in part, and compare it.

#include <algorithm>

#include "app/frmCompare.h"
#include "app/frmMain.h"
#include "platform/MessageBoxes.h"
#include "platform/Trapped.h"
#include "project/SetParameters.h"
#include "tools/ParameterGridWindow.h"

namespace velmoor {

bool frmMain::RunItemCommand(MainCommand command) {
  const auto& uploads = UploadItemsOfMenu();
  const auto& downloads = DownloadItemsOfMenu();
  const auto upload = std::ranges::find(uploads, command, &TransferItem::command);
  const auto download = std::ranges::find(downloads, command, &TransferItem::command);
  if (upload != uploads.end()) {
    UploadItem(*upload);
  } else if (download == downloads.end()) {
    return false;
  } else if (download->tools.front() == Tool::tuning) {
    operations_.transfers.DownloadTuning(false);
  } else {
    operations_.transfers.DownloadItem(*download, [] { return true; });
  }
  return true;
}

void frmMain::UploadItem(const TransferItem& item) {
  if (operations_.uploads.UploadItem(item)) LaunchUploadedToolWindows(item.tools);
}

// ---- from a window's buttons

// A window that blocks the main window is a command of its own already.
void frmMain::RunWindowCommand(MainCommand command, const std::function<void()>& work) {
  if (inCommand_) return work();
  RunCommand(TrapPrefix(command), [&work] {
    work();
    return true;
  });
}

void frmMain::RunRequest(Tool tool, WindowRequest what) {
  switch (what) {
    case WindowRequest::upload:
      return UploadFromWindow(tool);
    case WindowRequest::download:
      return DownloadFromWindow(tool);
    case WindowRequest::save:
      return RunWindowCommand(MainCommand::mnuFileSave, [this] { mnuFileSave_Click(); });
    case WindowRequest::compare:
      return RunWindowCommand(MainCommand::mnuToolsCompare, [this] { (void)Compare(); });
    case WindowRequest::rehearse:
      return rehearsal_.Rehearse();
    case WindowRequest::tryIt:
      return TryGains();
  }
}

void frmMain::UploadFromWindow(Tool tool) {
  const TransferItem& item = ItemOf(UploadItemsOfMenu(), tool);
  RunWindowCommand(item.command.value(), [this, &item] { UploadItem(item); });
}

void frmMain::DownloadFromWindow(Tool tool) {
  const TransferItem& item = ItemOf(DownloadItemsOfMenu(), tool);
  RunWindowCommand(item.command.value(), [this, &item, tool] {
    // The window of the gains has asked and accepted by itself.
    if (tool == Tool::tuning) {
      operations_.transfers.DownloadTuning(true);
      return;
    }
    operations_.transfers.DownloadItem(
        item, [this, tool] { return clsProject->WindowOf(tool).CommitPending(); });
  });
}

void frmMain::TryGains() {
  if (!operations_.connection.GoOnlineFor("The gains cannot be tried!")) return;
  if (!MayMoveByHand("Cannot try gains")) return;
  tryIt_.Show(FormMode::modal);
  RefreshWindow();
}

// The former values are in the project again where they did not all go out.
bool frmMain::SendGains(const std::vector<std::string>& assignments) {
  std::vector<std::string> former;
  for (const std::string& assignment : assignments) {
    const std::string name = assignment.substr(0, assignment.find('='));
    former.push_back(name + "=" + clsProject->Editor().GetParameterValue(name));
  }
  const std::vector<std::string> faults = SetParameters(*clsProject, assignments);
  if (!faults.empty()) {
    std::string words = "The gains cannot be taken!";
    for (const std::string& fault : faults) words += "\r" + fault;
    ShowExclamation(words);
    return false;
  }
  bool sent = false;
  RunWindowCommand(MainCommand::mnuToolsDownloadParameterTuning,
                   [&] { sent = operations_.transfers.DownloadTuning(true); });
  if (!sent) (void)SetParameters(*clsProject, former);
  return sent;
}

// The windows of the indexer's tools, where these are at home.
void frmMain::LaunchUploadedToolWindows(const std::vector<Tool>& tools) {
  if (eSelectedModule != Module::indexer) return;
  for (const Tool tool : tools) {
    const ToolInfo& info = InfoOf(tool);
    if (!info.modal && ui_.commands[info.open].Enabled()) RunToolCommand(info.open);
  }
}

// ---- comparing

bool frmMain::Compare() {
  return Trapped("Compare with Hardware failed!\r", [this] {
    const auto parts = operations_.compare.Run();
    if (parts) compared_ = parts;
    return parts.has_value();
  });
}

void frmMain::mnuToolsCompare_Click() {
  if (!clsProject || !Compare()) return;
  if (Differs(*compared_)) {
    (void)frmCompare(*compared_).Show(FormMode::modal);
  } else {
    ShowInformation("The hardware holds what the project holds.");
  }
}

}  // namespace velmoor
