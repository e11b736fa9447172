// Moving one item of a project, or one group of them, to the amplifier and back; and comparing.

#include <algorithm>

#include "app/frmCompare.h"
#include "app/frmMain.h"
#include "platform/MessageBoxes.h"
#include "platform/Trapped.h"
#include "project/ProjectCompare.h"
#include "project/UploadFlow.h"
#include "tools/ParameterGridWindow.h"

namespace velmoor {

// One item of a transfer: a tool, or a group of them.
struct frmMain::ItemTransfer {
  std::string_view command;
  std::string name;
  std::vector<Tool> tools;

  static const std::vector<ItemTransfer>& Uploads();
  static const std::vector<ItemTransfer>& Downloads();
};

namespace {

constexpr const char* kAllTables = "All Tables";

}  // namespace

const std::vector<frmMain::ItemTransfer>& frmMain::ItemTransfer::Uploads() {
  static const std::vector<ItemTransfer> kUploads = [] {
    std::vector<ItemTransfer> items;
    for (const ToolInfo& info : Tools()) {
      items.push_back({info.upload, std::string(info.item), {info.tool}});
    }
    items.push_back(
        {"mnuToolsUploadTablesAll", kAllTables, {Tool::jog, Tool::zone, Tool::position}});
    return items;
  }();
  return kUploads;
}

// The machine's description travels with the parameters that it is made of.
const std::vector<frmMain::ItemTransfer>& frmMain::ItemTransfer::Downloads() {
  static const std::vector<ItemTransfer> kDownloads = [] {
    std::vector<ItemTransfer> items;
    for (const ToolInfo& info : Tools()) {
      if (info.download.empty()) continue;
      std::vector<Tool> tools{info.tool};
      if (info.tool == Tool::editor) tools.push_back(Tool::mechanicalSystem);
      items.push_back({info.download, std::string(info.item), std::move(tools)});
    }
    items.push_back({"mnuToolsDownloadTablesAll", kAllTables, {kTables.begin(), kTables.end()}});
    return items;
  }();
  return kDownloads;
}

bool frmMain::RunItemCommand(const std::string& name) {
  const auto named = [&name](const ItemTransfer& item) { return item.command == name; };
  const auto upload = std::ranges::find_if(ItemTransfer::Uploads(), named);
  const auto download = std::ranges::find_if(ItemTransfer::Downloads(), named);
  if (upload != ItemTransfer::Uploads().end()) {
    UploadItems(*upload);
  } else if (download == ItemTransfer::Downloads().end()) {
    return false;
  } else if (download->tools.front() == Tool::tuning) {
    DownloadTuningItem();
  } else {
    DownloadItems(*download, [] { return true; });
  }
  UnloadProcedureDialog();
  return true;
}

// ---- from a window's buttons

// A window that blocks the main window is a command of its own already.
void frmMain::RunWindowCommand(const std::string& name, const std::function<void()>& work) {
  const auto run = [this, &work] {
    work();
    UnloadProcedureDialog();
    return true;
  };
  if (inCommand_) {
    run();
  } else {
    RunCommand("frmMain." + name + "_Click: ", run);
  }
}

void frmMain::UploadFromWindow(Tool tool) {
  const auto item = std::ranges::find_if(ItemTransfer::Uploads(), [tool](const ItemTransfer& each) {
    return each.tools.front() == tool;
  });
  RunWindowCommand(std::string(item->command), [this, &item] { UploadItems(*item); });
}

void frmMain::DownloadFromWindow(Tool tool) {
  // This window has asked and accepted by itself.
  if (tool == Tool::tuning) return TuningDownload();
  const auto item =
      std::ranges::find_if(ItemTransfer::Downloads(),
                           [tool](const ItemTransfer& each) { return each.tools.front() == tool; });
  RunWindowCommand(std::string(item->command), [this, &item, tool] {
    DownloadItems(*item, [this, tool] {
      return clsProject->ParameterToolOf(tool)->Window().CommitPending();
    });
  });
}

void frmMain::DownloadTuningItem() {
  if (!AskOkCancel("Existing gain tuning parameters in hardware will be overwritten!\r"
                   "Do you wish to proceed?")) {
    return;
  }
  clsHX7Tuning& tuning = clsProject->Tuning();
  if (tuning.ChangedRigidity() && !AskRigidity()) tuning.SetChangedRigidity(false);
  TuningDownload();
}

int frmMain::StepsOf(const ItemTransfer& item) const {
  int steps = 0;
  for (const Tool tool : item.tools) steps += clsProject->RowsOf(tool);
  return steps;
}

// What a failed or stopped upload has read leaves no trace: one tool's rows would be half the
// file's and half the amplifier's.
void frmMain::UploadItems(const ItemTransfer& item) {
  const std::string& name = item.name;
  Trapped("Upload " + name + " failed!\r", [&] {
    if (!GoOnlineForTransfer("Upload failed!")) return false;
    if (!AskExclamationYesNo(
            "Existing " + name +
            " will be overwritten with hardware data!\rDo you wish to continue?")) {
      return false;
    }
    BeginProcedure("Upload " + name, StepsOf(item));
    const bool ok = clsProject->UploadParts(item.tools);
    UnloadProcedureDialog();
    if (!ok) {
      ShowExclamation(blnStopProcedure ? "Upload " + name + " terminated!"
                                       : "Could not upload " + name + " from controller!");
      blnStopProcedure = false;
      return false;
    }
    ShowUploadedDifferences();
    if (!AskYesNo(name +
                  " successfully uploaded from controller.\rCommit uploaded data to project?")) {
      clsProject->DropUpload();
      return true;
    }
    if (!clsProject->CommitUpload()) return false;
    LaunchUploadedToolWindows(item.tools);
    return true;
  });
}

// The windows of the indexer's tools, where these are at home.
void frmMain::LaunchUploadedToolWindows(const std::vector<Tool>& tools) {
  if (eSelectedModule != Module::indexer) return;
  for (const Tool tool : tools) {
    const ToolInfo& info = InfoOf(tool);
    const std::string command(info.open);
    if (!info.modal && window_->CommandEnabled(command)) RunToolCommand(command);
  }
}

void frmMain::DownloadItems(const ItemTransfer& item, const std::function<bool()>& prepare) {
  const std::string& name = item.name;
  Trapped("Download " + name + " failed!\r", [&] {
    if (!GoOnlineForTransfer("Download failed!")) return false;
    if (!AskOkCancel(name + " of the project will be downloaded to the controller.\r"
                            "Do you wish to proceed?") ||
        !prepare()) {
      return false;
    }
    BeginProcedure("Download " + name, StepsOf(item));
    const bool ok = clsProject->DownloadParts(item.tools);
    const std::string complete = "Download " + name + " complete!";
    const std::string stopped = "Download " + name + " terminated!";
    FinishDownload(ok, {complete.c_str(), stopped.c_str()});
    return ok;
  });
}

// ---- comparing

void frmMain::ShowUploadedDifferences() {
  std::vector<PartComparison> parts = clsProject->CompareWithUpload();
  // A machine that cannot be used was asked about, and is no value that a Yes would take.
  for (PartComparison& part : parts) {
    std::erase_if(part.differences, [](const ProjectDifference& d) { return d.row.empty(); });
  }
  if (Differs(parts)) frmCompare(parts).Show();
}

void frmMain::mnuToolsCompare_Click() {
  if (!clsProject) return;
  Trapped("Compare with Hardware failed!\r", [this] {
    if (!GoOnlineForTransfer("Comparison failed!")) return false;
    BeginProcedure("Compare with Hardware", StepsOfWholeProject(false));
    const bool read = RunUploadStages(*clsProject);
    UnloadProcedureDialog();
    const std::vector<PartComparison> parts = clsProject->CompareWithUpload();
    // What was read serves the comparison alone.
    clsProject->DropUpload();
    if (!read) return false;
    if (Differs(parts)) {
      frmCompare(parts).Show();
    } else {
      ShowInformation("The hardware holds what the project holds.");
    }
    return true;
  });
  UnloadProcedureDialog();
}

}  // namespace velmoor
