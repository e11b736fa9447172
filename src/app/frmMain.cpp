#include "app/frmMain.h"

#include <algorithm>

#include "app/ConnectionMenu.h"
#include "app/HelpTopics.h"
#include "platform/Events.h"
#include "platform/Form.h"
#include "platform/Log.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/ScopedFlag.h"
#include "platform/SerialPorts.h"
#include "platform/Settings.h"
#include "platform/Trapped.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr std::chrono::milliseconds kMessageLook{200};
constexpr std::chrono::milliseconds kPanelLook{500};
constexpr std::chrono::milliseconds kAxisLook{150};
constexpr int kMonitoringPasses = 10;
constexpr std::string_view kStatusLead = "System Status: ";

// By name as far as the bar has room for it.
std::string PendingText(const std::string& dirty) {
  constexpr std::ptrdiff_t kNamed = 2;
  if (dirty.empty()) return {};
  const auto items = 1 + std::count(dirty.begin(), dirty.end(), ',');
  return "To download: " + (items <= kNamed ? dirty : std::to_string(items) + " items");
}

std::string PortName(std::int16_t com) {
  if (com == kSimulatedPort) return "Simulated amplifier";
  if (com == kLinePort) return world().serialPorts->Look(com).name;
  return "COM" + std::to_string(com + 1);
}

}  // namespace

frmMain::frmMain(SerialPort& comm, SingleInstance& instance)
    : SessionState(comm),
      instance_(instance),
      window_(world().forms->LoadMainWindow(layouts::frmMain::kLayout)) {}

frmMain::~frmMain() = default;

void frmMain::MDIForm_Load() {
  intEcho = 1;
  ReadFromRegistryCommunicationsSettings();
  ReadFromRegistryMotorSize();
  ReadFromRegistryWindowSettings();
  ReadFromRegistryLogSettings();
  ReadFromRegistryWatchSettings();
  ReadFromRegistryAlarmLanguage();
  LoadRecentFiles();
  ConnectWindow();
  for (const MainCommand shown :
       {MainCommand::mnuViewStatusBar, MainCommand::mnuViewToolbarStandard,
        MainCommand::mnuViewToolbarModule}) {
    ui_.commands[shown].SetChecked(true);
  }
  DisplayFullMenuBar(false);
  DisplayFullModuleToolBar(false);
  LineChanged(LineState::offline);
  UpdateStatusText("Offline");
  window_->SetCaption("Velmoor");
  UpdatePages();
  Trapped("frmMain.MDIForm_Load: ", [this] {
    instance_.Listen([this](const std::string& bytes) { ReceiveMessage(bytes); },
                     [this] { return window_->IsVisible(); }, [this] { window_->Activate(); });
    return true;
  });
}

void frmMain::ConnectWindow() {
  commandConnections_ = ui_.commands.OnChosen([this](MainCommand command) {
    switch (command) {
      case MainCommand::mnuConnectionCancel:
        // While the search runs, which is a command itself.
        return SetStopProcedure(true);
      case MainCommand::mnuToolsConnection:
        return ShowConnectionMenu(ui_, *this);
      default:
        OnCommand(command);
    }
  });
  connections_ += window_->RecentChosen.Connect([this](int place) { OpenRecent(place); });
  connections_ +=
      window_->FileDropped.Connect([this](const std::string& path) { OnFileDropped(path); });
  connections_ += world().forms->HelpAsked.Connect([this](const Form* form) {
    for (const Form* const page : {projectPage_.Shown(), workplace_.Shown(), startPage_.Shown()}) {
      if (form == nullptr) form = page;
    }
    ShowHelpFor(form);
  });
  connections_ += window_->PanelChosen.Connect([this](StatusPanel) {
    if (operations_.connection.State() == LineState::alarm)
      OnCommand(MainCommand::mnuToolsMonitoring);
  });
  connections_ += window_->QueryUnload.Connect([this] { MDIForm_QueryUnload(); });
  connections_ += window_->Unload.Connect([this](bool& Cancel) { MDIForm_Unload(Cancel); });
  connections_ += window_->Closed.Connect([this] { Closed.Raise(); });
  tmrMessages_->SetInterval(kMessageLook);
  connections_ += tmrMessages_->Tick.Connect([this] { DeliverMessages(); });
  tmrPanels_->SetInterval(kPanelLook);
  connections_ += tmrPanels_->Tick.Connect([this] {
    if (!inCommand_ && !world().forms->InputBlocked()) {
      const ScopedFlag running(inCommand_);
      WatchWhileIdle();
    }
    if (!workplace_.Runs()) RefreshWindow();
  });
  tmrPanels_->SetEnabled(true);
  tmrLine_->SetInterval(kAxisLook);
  connections_ += tmrLine_->Tick.Connect([this] {
    if (inCommand_ || world().forms->InputBlocked()) return;
    const ScopedFlag running(inCommand_);
    workplace_.LookAtNext();
  });
}

template <void (frmMain::*Handler)()>
void frmMain::Handle(frmMain& window) {
  (window.*Handler)();
}

const std::vector<frmMain::CommandEntry>& frmMain::Commands() {
  using enum MainCommand;
  static const std::vector<CommandEntry> commands{
      {mnuFileNew, &Handle<&frmMain::mnuFileNew_Click>},
      {mnuFileReadAmplifier, &Handle<&frmMain::mnuFileReadAmplifier_Click>},
      {mnuToolsSimulated, &Handle<&frmMain::mnuToolsSimulated_Click>},
      {mnuFileClose, &Handle<&frmMain::mnuFileClose_Click>},
      {mnuFileOpen, &Handle<&frmMain::mnuFileOpen_Click>},
      {mnuFileSave, &Handle<&frmMain::mnuFileSave_Click>},
      {mnuFileSaveAs, &Handle<&frmMain::mnuFileSaveAs_Click>},
      {mnuFilePageSetup, &Handle<&frmMain::mnuFilePageSetup_Click>},
      {mnuFilePrint, &Handle<&frmMain::mnuFilePrint_Click>},
      {mnuFileExportText, &Handle<&frmMain::mnuFileExportText_Click>},
      {mnuFileImportText, &Handle<&frmMain::mnuFileImportText_Click>},
      {mnuFileCompare, &Handle<&frmMain::mnuFileCompare_Click>},
      {mnuViewHistory, &Handle<&frmMain::mnuViewHistory_Click>},
      {mnuLineOpen, &Handle<&frmMain::mnuLineOpen_Click>},
      {mnuLineSearch, &Handle<&frmMain::mnuLineSearch_Click>},
      {mnuLineBack, &Handle<&frmMain::mnuLineBack_Click>},
      {mnuLineClose, &Handle<&frmMain::mnuLineClose_Click>},
      {mnuFileExit, &Handle<&frmMain::mnuFileExit_Click>},
      {mnuViewToolbarStandard, &Handle<&frmMain::ShowToolBars>},
      {mnuViewToolbarModule, &Handle<&frmMain::ShowToolBars>},
      {mnuViewStatusBar, &Handle<&frmMain::ShowStatusBar>},
      {mnuModuleTestRun, &Handle<&frmMain::mnuModuleTestRun_Click>},
      {mnuModuleIndexer, &Handle<&frmMain::mnuModuleIndexer_Click>},
      {mnuModuleTuning, &Handle<&frmMain::mnuModuleTuning_Click>},
      {mnuModuleMonitoring, &Handle<&frmMain::mnuModuleMonitoring_Click>},
      {mnuModuleEditor, &Handle<&frmMain::mnuModuleEditor_Click>},
      {mnuToolsOnline, &Handle<&frmMain::mnuToolsOnline_Click>},
      {mnuToolsOffline, [](frmMain& window) { window.operations_.connection.GoOffline(); }},
      {mnuToolsCommunicationsSettings,
       [](frmMain& window) { window.CommunicationsSettingsOpen(); }},
      {mnuToolsMonitoring, &Handle<&frmMain::mnuToolsMonitoring_Click>},
      {mnuToolsTerminal, &Handle<&frmMain::mnuToolsTerminal_Click>},
      {mnuToolsServoJog, &Handle<&frmMain::mnuToolsServoJog_Click>},
      {mnuToolsInertiaRatio, &Handle<&frmMain::mnuToolsInertiaRatio_Click>},
      {mnuToolsHomePosition, &Handle<&frmMain::mnuToolsHomePosition_Click>},
      {mnuToolsAlarms, &Handle<&frmMain::mnuToolsAlarms_Click>},
      {mnuToolsRecordings, &Handle<&frmMain::mnuToolsRecordings_Click>},
      {mnuToolsProductInformation, &Handle<&frmMain::mnuToolsProductInformation_Click>},
      {mnuToolsUploadAll,
       [](frmMain& window) {
         if (window.clsProject) window.operations_.uploads.UploadAll();
       }},
      {mnuToolsDownloadAll,
       [](frmMain& window) { window.RunWithProject(&Transfers::DownloadAll); }},
      {mnuToolsDownloadNew,
       [](frmMain& window) { window.RunWithProject(&Transfers::DownloadNew); }},
      {mnuToolsCompare, &Handle<&frmMain::mnuToolsCompare_Click>},
      {mnuToolsResetDefaultsAll,
       [](frmMain& window) { window.RunReset([](Resets& resets) { resets.ResetEverything(); }); }},
      {mnuToolsResetParametersAll,
       [](frmMain& window) { window.RunReset([](Resets& resets) { resets.ResetParameters(); }); }},
      {mnuToolsResetTablesAll,
       [](frmMain& window) { window.RunReset([](Resets& resets) { resets.ResetTables(); }); }},
      {mnuToolsResetTableIndex,
       [](frmMain& window) {
         window.RunReset([](Resets& resets) { resets.ResetTable(Tool::position); });
       }},
      {mnuToolsResetTableJog,
       [](frmMain& window) {
         window.RunReset([](Resets& resets) { resets.ResetTable(Tool::jog); });
       }},
      {mnuToolsResetTableZone,
       [](frmMain& window) {
         window.RunReset([](Resets& resets) { resets.ResetTable(Tool::zone); });
       }},
      {mnuEditCut, &Handle<&frmMain::mnuEditCut_Click>},
      {mnuEditCopy, &Handle<&frmMain::mnuEditCopy_Click>},
      {mnuEditPaste, &Handle<&frmMain::mnuEditPaste_Click>},
      {mnuEditUndo, &Handle<&frmMain::mnuEditUndo_Click>},
      {mnuEditRedo, &Handle<&frmMain::mnuEditRedo_Click>},
      {mnuWindowCascade, &Handle<&frmMain::mnuWindowCascade_Click>},
      {mnuWindowTileHorizontal, &Handle<&frmMain::mnuWindowTileHorizontal_Click>},
      {mnuWindowTileVertical, &Handle<&frmMain::mnuWindowTileVertical_Click>},
      {mnuHelpContents, &Handle<&frmMain::mnuHelpContents_Click>},
      {mnuToolsIdleWatch, &Handle<&frmMain::mnuToolsIdleWatch_Click>},
      {mnuViewGermanAlarms, &Handle<&frmMain::mnuViewGermanAlarms_Click>},
      {mnuHelpLog, &Handle<&frmMain::mnuHelpLog_Click>},
      {mnuHelpLogTraffic, &Handle<&frmMain::mnuHelpLogTraffic_Click>},
      {mnuHelpAbout, &Handle<&frmMain::mnuHelpAbout_Click>},
  };
  return commands;
}

void frmMain::RunWithProject(bool (Transfers::*operation)()) {
  if (clsProject) (operations_.transfers.*operation)();
}

void frmMain::RunReset(void (*reset)(Resets& resets)) {
  if (blnIsOnline) reset(operations_.resets);
}

std::string frmMain::TrapPrefix(MainCommand command) const {
  return "frmMain." + ui_.commands.NameOf(command) + "_Click: ";
}

void frmMain::OnCommand(MainCommand command) {
  const auto& commands = Commands();
  const auto entry = std::ranges::find(commands, command, &CommandEntry::command);
  RunCommand(TrapPrefix(command), [this, command, &commands, entry] {
    if (entry == commands.end()) return RunConnectionCommand(command) || RunToolCommand(command);
    entry->run(*this);
    return true;
  });
}

bool frmMain::RunCommand(const std::string& prefix, const std::function<bool()>& work) {
  if (inCommand_) return false;
  // The port is the command's.
  workplace_.Rest();
  bool done = false;
  {
    const ScopedFlag running(inCommand_);
    done = Trapped(prefix, work);
    operations_.connection.LeaveIfLost();
  }
  RefreshWindow();
  DeliverMessages();
  return done;
}

// ---- messages of other processes

void frmMain::ReceiveMessage(const std::string& bytes) {
  if (bytes.empty()) return;
  messages_.push_back(bytes);
  DeliverMessages();
}

void frmMain::DeliverMessages() {
  const bool ready = started_ && !inCommand_ && !world().forms->InputBlocked();
  if (ready && !messages_.empty()) {
    const std::string message = messages_.front();
    messages_.pop_front();
    ParseCommand(message);
  }
  tmrMessages_->SetEnabled(!messages_.empty());
}

void frmMain::StartFinished() {
  started_ = true;
  if (closeWhenStarted_) {
    window_->Close();
    return;
  }
  DeliverMessages();
}

// ---- what the window shows of the session

void frmMain::UpdateStatusText(const std::string& strStatus) {
  ShowStatusText(strStatus);
  LogInformation("session", strStatus);
}

void frmMain::ShowStatusText(const std::string& strStatus) {
  window_->SetPanel(StatusPanel::status, std::string(kStatusLead) + strStatus);
}

void frmMain::RefreshWindow() {
  window_->SetChanged(clsProject && clsProject->NeedsSaving());
  EnableByState();
  UpdatePanels();
  UpdateEditIconToolButtons();
  UpdatePages();
}

void frmMain::UpdatePanels() {
  const std::string dirty = clsProject ? clsProject->WhatIsDirty() : std::string();
  window_->SetPanel(StatusPanel::pending, PendingText(dirty));
  window_->SetPanel(StatusPanel::axis, "Axis " + strAxis);
  window_->SetPanel(StatusPanel::port, PortName(intCOM));
  window_->SetPanel(StatusPanel::baudRate,
                    lngBaudRate > 0 ? std::to_string(lngBaudRate) + " bit/s" : "speed not known");
}

// ---- closing

// A close during the start waits for its end; one during a command is refused.
bool frmMain::MayClose() {
  if (!started_) closeWhenStarted_ = true;
  return started_ && !inCommand_;
}

void frmMain::MDIForm_QueryUnload() {
  if (!MayClose()) return;
  // Intended: both are gone even when the closing is refused below.
  instance_.StopListening();
  instance_.Release();
}

void frmMain::MDIForm_Unload(bool& Cancel) {
  Cancel = true;
  if (!MayClose()) return;
  {
    const ScopedFlag running(inCommand_);
    LeaveForGood();
    Cancel = !Trapped("frmMain.MDIForm_Unload: ", [this] { return RemoveActiveProject(); });
    if (!Cancel) WriteToRegistry();
  }
  if (Cancel) RefreshWindow();
}

void frmMain::LeaveForGood() {
  workplace_.Rest();
  if (!blnHelix7CommExists) return;
  WaitForMonitoring();
  operations_.connection.Leave();
}

void frmMain::LeaveAtOnce() {
  try {
    StoreCommunicationsSettings();
  } catch (const std::exception& error) {
    LogWarning("session", error.what());
  }
  if (!clsProject) return;
  if (!clsProject->NeedsSaving()) return clsProject->RemoveWorkingFile();
  world().databases->Release(clsProject->ProjectDatabasePath());
  LogWarning("session", "Project " + clsProject->Title() + " was not saved; its changes are in " +
                            clsProject->ProjectDatabasePath() +
                            " until it is opened again: a copy of it is a project");
}

void frmMain::WaitForMonitoring() {
  for (int pass = 0; pass < kMonitoringPasses && monitoringNotDone_ && monitoringNotDone_();
       ++pass) {
    PauseInSec(1);
  }
}

}  // namespace velmoor
