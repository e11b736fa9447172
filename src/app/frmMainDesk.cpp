// What operations tell: the progress dialog, the status bar, and the windows that follow them.

#include <utility>

#include "app/ConnectionMenu.h"
#include "app/frmCompare.h"
#include "app/frmDoubts.h"
#include "app/frmMain.h"
#include "platform/Events.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/SerialPorts.h"
#include "platform/Settings.h"
#include "platform/Trapped.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr const char* kWatchSetting = "IdleWatch";
constexpr const char* kAlarmLanguageSetting = "AlarmLanguage";
constexpr std::int32_t kGerman = 3;  // as the catalogue numbers its languages
constexpr const char* kSearchCaption = "Searching for the Amplifier";

}  // namespace

void frmMain::WorkBegins(const std::string& caption, int steps, bool items) {
  // It may change what the amplifier holds.
  compared_.reset();
  clsProcedure = std::make_unique<clsHX7Procedure>();
  clsProcedure->Steps = steps;
  clsProcedure->Show_Procedure(caption, items);
}

void frmMain::WorkGoesOn(const WorkStep& step) {
  if (!step.current.empty()) ShowStatusText(step.current);
  if (!clsProcedure) return;
  clsProcedure->CurrentFinished = step.current.empty() ? step.finished : step.row;
  clsProcedure->CurrentSteps = step.rows;
  clsProcedure->Current = step.current;
  clsProcedure->Finished = step.finished;
  clsProcedure->Total = step.total;
}

void frmMain::WorkEnds() {
  clsProcedure.reset();
}

// Most searches end at the first speed: the dialog comes with the second.
void frmMain::SearchGoesOn(std::int32_t bitsPerSecond, const std::string& axis, int tries) {
  const std::string text =
      "Asking axis " + axis + " at " + std::to_string(bitsPerSecond) + " bit/s";
  ShowStatusText(text);
  // The start looks for a motor, and is offline all the while.
  if (!started_) return;
  window_->SetPanel(StatusPanel::line, text);
  window_->SetPanel(StatusPanel::connection, "Trying " + std::to_string(bitsPerSecond));
  if (tries < 2) return;
  if (!clsProcedure) {
    clsProcedure = std::make_unique<clsHX7Procedure>();
    clsProcedure->Show_Procedure(kSearchCaption, false);
    searchShown_ = true;
  }
  if (searchShown_) clsProcedure->Total = text;
}

void frmMain::SearchEnds() {
  if (searchShown_) clsProcedure.reset();
  searchShown_ = false;
  ShowLine();
}

void frmMain::ShowLine() {
  window_->SetPanel(StatusPanel::line, operations_.connection.StateText());
  window_->SetPanel(StatusPanel::connection, operations_.connection.ConnectionText());
}

void frmMain::LineChanged(LineState state) {
  static constexpr std::array<Tone, 5> kTones{Tone::faint, Tone::busy, Tone::good, Tone::alarm,
                                              Tone::faint};
  window_->SetStatusTone(kTones[static_cast<std::size_t>(state)]);
  ShowLine();
  const bool known = state == LineState::online || state == LineState::alarm;
  if (state != LineState::searching) {
    window_->SetPanel(StatusPanel::model, known ? clsHelix7->ServoModel() : std::string());
  }
  EnableByState();
  // A box may stand before the page for long: what it shows of the line is that of now.
  if (std::exchange(lineOfPage_, state) != state) UpdatePages();
}

void frmMain::DifferencesFound(const std::vector<PartComparison>& parts) {
  (void)frmCompare(parts).Show(FormMode::modal);
}

void frmMain::DoubtsFound(clsHX7Project& project) {
  frmDoubts(project).ShowIfAny();
  RefreshWindow();
}

void frmMain::StartHelix7() {
  SessionState::StartHelix7();
  operations_.FollowDevice();
  instruments_.Listen();
}

// ---- the user's choice of a connection

bool frmMain::StartSimulatorBehind(std::int16_t com, std::int32_t bitsPerSecond) {
  if (com != kSimulatedPort || world().serialPorts == nullptr) return true;
  const BusyPointer busy;
  const std::string reason = world().serialPorts->StartSimulator(bitsPerSecond);
  if (!reason.empty()) ShowExclamation(reason);
  return reason.empty();
}

void frmMain::CommunicationsSettingsOpen(bool search) {
  OpenModalTool(ToolWindow::communicationsSettings, "Main.CommunicationsSettingsOpen: ",
                [this, search] { (void)frmCommunications(*this, search).Show(FormMode::modal); });
}

void frmMain::ConnectByHandIf(HardwareConnection::Outcome outcome) {
  if (outcome == HardwareConnection::Outcome::byHand) CommunicationsSettingsOpen();
}

void frmMain::mnuToolsOnline_Click() {
  ConnectByHandIf(operations_.connection.GoOnline());
}

bool frmMain::RunConnectionCommand(MainCommand command) {
  if (const auto com = PortOfCommand(command)) {
    ConnectByHandIf(operations_.connection.GoOnlineAt(*com));
    return true;
  }
  if (const auto rate = RateOfCommand(command)) {
    const LineSettings settings{.com = COM(), .bitsPerSecond = *rate, .axis = Axis()};
    (void)operations_.connection.ConnectBy(
        settings, [this, &rate] { return StartSimulatorBehind(COM(), *rate); });
    return true;
  }
  if (command != MainCommand::mnuConnectionAxes) return false;
  CommunicationsSettingsOpen(true);
  return true;
}

// ---- the idle line

void frmMain::WatchWhileIdle() {
  operations_.connection.WatchLine();
  // These ask by themselves.
  if (ToolOpened(ToolWindow::monitoring) || ToolOpened(ToolWindow::terminal)) return;
  operations_.watch.Look();
}

void frmMain::ReadFromRegistryWatchSettings() {
  operations_.watch.SetOn(world().settings->ReadNumber(kWatchSetting, 1) != 0);
  ui_.commands[MainCommand::mnuToolsIdleWatch].SetChecked(operations_.watch.IsOn());
}

void frmMain::mnuToolsIdleWatch_Click() {
  const bool on = ui_.commands[MainCommand::mnuToolsIdleWatch].Checked();
  operations_.watch.SetOn(on);
  // What was read last would stand there for ever.
  if (!on) operations_.connection.NoteAlarm({});
  Trapped("frmMain.mnuToolsIdleWatch_Click: ", [on] {
    world().settings->Write(kWatchSetting, on ? "1" : "0");
    return true;
  });
}

void frmMain::ReadFromRegistryAlarmLanguage() {
  eAlarmLanguage = world().settings->ReadNumber(kAlarmLanguageSetting, 2) == kGerman ? kGerman : 2;
  ui_.commands[MainCommand::mnuViewGermanAlarms].SetChecked(eAlarmLanguage == kGerman);
}

void frmMain::mnuViewGermanAlarms_Click() {
  eAlarmLanguage = ui_.commands[MainCommand::mnuViewGermanAlarms].Checked() ? kGerman : 2;
  Trapped("frmMain.mnuViewGermanAlarms_Click: ", [this] {
    GetAlarmDefinitions();
    world().settings->Write(kAlarmLanguageSetting, NumberText(eAlarmLanguage));
    return true;
  });
}

void frmMain::clsProject_ResolutionDataInvalidated(const std::string& strItems) {
  ShowExclamation(
      "Warning!  Data invalidation occurred while updating project data after resolution "
      "change!\rLimit values have replaced invalid data!\r\rCheck the following data sets: " +
      strItems);
}

}  // namespace velmoor
