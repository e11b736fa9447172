// The line that stands above the single axis: opening and closing it, and the way to an axis and
// back.

#include "app/frmMain.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Trapped.h"
#include "platform/World.h"

namespace velmoor {

LineWorkplace::Hooks frmMain::HooksOfLine() {
  return {.command = [this](const std::string& prefix,
                            const std::function<bool()>& work) { RunCommand(prefix, work); },
          .leaveLine =
              [this] {
                if (blnIsOnline) operations_.connection.Leave();
              },
          .followDevice = [this] { operations_.FollowDevice(); },
          .showPages = [this] { UpdatePages(); },
          .openAxis = [this](const LineAxis& axis, const LineSettings& settings,
                             bool present) { OpenAxis(axis, settings, present); }};
}

bool frmMain::CloseProjectForLine() {
  if (!projectShown_) return true;
  if (!RemoveActiveProject()) return false;
  DropProject();
  return true;
}

void frmMain::mnuLineOpen_Click() {
  Trapped("Open Line File failed!\r", [this] {
    const auto chosen = world().dialogs->OpenFile({.title = "Open Line File",
                                                   .filter = "Line File (*.toml)|*.toml",
                                                   .defaultSuffix = "toml",
                                                   .initialDirectory = initialDirectory_,
                                                   .initialName = {}});
    return chosen && OpenLineFile(*chosen);
  });
}

void frmMain::OpenLine(const std::string& path) {
  RunCommand("frmMain.OpenLine: ", [this, &path] { return OpenLineFile(path); });
}

bool frmMain::OpenLineFile(const std::string& path) {
  auto line = LineWorkplace::Read(path);
  // What is open stays for a file that cannot be.
  if (!line || !CloseProjectForLine()) return false;
  workplace_.Open(path, std::move(*line));
  UpdateStatusText("Line '" + GetFileTitle(path) + "' opened.");
  return true;
}

void frmMain::mnuLineSearch_Click() {
  Trapped("Search and Save failed!\r", [this] {
    if (CloseProjectForLine()) workplace_.SearchAndSave();
    return true;
  });
}

// The project of an axis is closed as any other is, with its questions.
void frmMain::mnuLineBack_Click() {
  if (!workplace_.IsOpen() || !CloseProjectForLine()) return;
  if (blnIsOnline) operations_.connection.Leave();
}

void frmMain::mnuLineClose_Click() {
  workplace_.Close();
  if (!beforeLine_) return;
  if (blnIsOnline) operations_.connection.Leave();
  SetCOM(beforeLine_->com);
  SetBaudRate(beforeLine_->bitsPerSecond);
  SetAxis(beforeLine_->axis);
  beforeLine_.reset();
}

void frmMain::OpenAxis(const LineAxis& axis, const LineSettings& settings, bool present) {
  if (blnIsOnline) operations_.connection.Leave();
  if (!beforeLine_) {
    beforeLine_ = LineSettings{.com = intCOM, .bitsPerSecond = lngBaudRate, .axis = strAxis};
  }
  SetCOM(settings.com);
  SetBaudRate(settings.bitsPerSecond);
  SetAxis(settings.axis);
  OpenChosenProject(axis.project, "Project ", true);
  if (!projectShown_ || !present) return;
  if (operations_.connection.GoOnlineFor("")) operations_.connection.Motor().Tell();
}

void frmMain::UpdateLine() {
  const bool open = workplace_.IsOpen();
  ui_.commands[MainCommand::mnuLineBack].SetEnabled(open && projectShown_);
  ui_.commands[MainCommand::mnuLineClose].SetEnabled(open);
  const bool looks = open && !projectShown_;
  if (tmrLine_->Enabled() != looks) tmrLine_->SetEnabled(looks);
}

}  // namespace velmoor
