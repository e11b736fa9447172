// The main window: it owns the session and everything that spans the whole project.
//
// Made by MainModule, which sets gMainForm to it. The fields of the session stand in SessionState;
// here is what the user does with them, in files by subject: the window itself (frmMain.cpp),
// project files, going online and offline, transfers, modules and tool windows. It never touches a
// control of a tool, and no lower layer calls it.
//
// While a command runs no other starts: what arrives meanwhile (a message of another process, the
// window's close button) waits or is refused. So nothing replaces the project under a transfer.
#pragma once

#include <array>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/LineWorkplace.h"
#include "app/ProjectPage.h"
#include "app/RecentFiles.h"
#include "app/StartPage.h"
#include "app/ToolWindows.h"
#include "app/clsHX7Procedure.h"
#include "app/frmCommunications.h"
#include "app/frmLog.h"
#include "instruments/frmRecordings.h"
#include "instruments/frmTryIt.h"
#include "layouts/frmMain.h"
#include "operations/Operations.h"
#include "platform/FileDialogs.h"
#include "platform/MainWindow.h"
#include "platform/SingleInstance.h"
#include "platform/World.h"
#include "project/SessionState.h"
#include "rehearsal/frmRehearsal.h"
#include "reports/clsHX7Print.h"
#include "windows/EditTarget.h"

namespace velmoor {

class frmMain final : public SessionState, private Desk {
 public:
  // Both must outlive the window.
  frmMain(SerialPort& comm, SingleInstance& instance);
  ~frmMain() override;

  // ---- the window; in this order
  void MDIForm_Initialize() { eLanguage = 2; }
  void MDIForm_Load();
  // Closes as the user does, with the questions.
  void Close() { (void)window_->Close(); }
  void Show() { window_->Show(); }
  // The start is over: waiting messages are delivered, and a close that was asked for happens.
  void StartFinished();
  // Runs when the window is gone from the screen.
  Event<> Closed;
  // Releases the objects of the session.
  void MDIForm_Terminate() {
    ReleaseObjects();
    clsPrint.reset();
  }

  [[nodiscard]] clsHX7Procedure* Procedure() override { return clsProcedure.get(); }
  // A stop of a run over a line holds to its end.
  [[nodiscard]] bool StopProcedure() const override {
    return SessionState::StopProcedure() || workplace_.Stopped();
  }
  void SetStopProcedure(bool stop) override {
    if (stop) workplace_.Stop();
    SessionState::SetStopProcedure(stop);
  }
  [[nodiscard]] Recorder* Record() override { return &instruments_.Record(); }
  [[nodiscard]] Module SelectedModule() const { return eSelectedModule; }
  // The tool's window is open.
  [[nodiscard]] bool ToolOpened(Tool tool) const { return clsProject && clsProject->IsShown(tool); }
  [[nodiscard]] bool ToolOpened(ToolWindow tool) const {
    return toolOpened_[static_cast<std::size_t>(tool)];
  }
  // Told by the monitoring tool while its window is open: whether a pass of it is under way.
  void SetMonitoringNotDone(std::function<bool()> probe) { monitoringNotDone_ = std::move(probe); }

  // Runs `work` as the user's command: alone, with its errors shown behind `prefix`. False: another
  // command is running, or `work` was refused or failed.
  bool RunCommand(const std::string& prefix, const std::function<bool()>& work);

  // Stops and switches off a motor that the test run has energised, without a word.
  void MakeSafe();
  // Leaves what a closing leaves, without a word: the settings of the communications are kept, the
  // working file goes. That of a project with unsaved changes stays, and the log names it: nobody
  // can be asked, and there is no other copy of them. Nothing but the end of the process may
  // follow.
  void LeaveAtOnce();

  // Makes the device object and listens to it.
  void StartHelix7();

  // ---- menus and status
  // The menus and tools that a start may offer; false while the session is being built.
  void EnableInitialMenuOptions(bool bState);
  void DisplayFullMenuBar(bool bState);
  void DisplayFullModuleToolBar(bool bState);
  // "System Status: " and the text, which goes to the log as well.
  void UpdateStatusText(const std::string& strStatus);

  // ---- project files
  void LaunchOpenProjectDialog();
  void CommandLineOpenProject(const std::string& strFileName);
  // A command line from another process, with or without quotes around it.
  void ParseCommand(const std::string& sCommand);

  // Starts the simulated amplifier where the port is its own. False: it did not start, of which the
  // user was told.
  [[nodiscard]] static bool StartSimulatorBehind(std::int16_t com, std::int32_t bitsPerSecond);

  // The operations on the amplifier, which the window drives.
  [[nodiscard]] Operations& Hardware() { return operations_; }

 private:
  struct CommandEntry {
    MainCommand command;
    void (*run)(frmMain& window);
  };

  // ---- the window (frmMain.cpp)
  static const std::vector<CommandEntry>& Commands();
  template <void (frmMain::*Handler)()>
  static void Handle(frmMain& window);
  void RunWithProject(bool (Transfers::*operation)());
  void RunReset(void (*reset)(Resets& resets));
  void ConnectWindow();
  void OnCommand(MainCommand command);
  // "frmMain.mnuFileOpen_Click: "
  [[nodiscard]] std::string TrapPrefix(MainCommand command) const;
  void ReceiveMessage(const std::string& bytes);
  void DeliverMessages();
  void RefreshWindow();
  // Offers what needs the amplifier only while it is connected.
  void EnableByState();
  // A status text that the next one follows within moments.
  void ShowStatusText(const std::string& strStatus);
  void UpdatePanels();
  [[nodiscard]] bool MayClose();
  void MDIForm_QueryUnload();
  void MDIForm_Unload(bool& Cancel);
  // Ends the connection, once monitoring lets go of it.
  void LeaveForGood();
  void WaitForMonitoring();
  void ReadFromRegistryCommunicationsSettings();
  void ReadFromRegistryMotorSize();
  void ReadFromRegistryWindowSettings();
  void ReadFromRegistryLogSettings();
  void WriteToRegistry();
  void WriteToRegistryCommunicationsSettings();
  // Throws std::runtime_error.
  void StoreCommunicationsSettings();
  void WriteToRegistryMotorSize();
  void WriteToRegistryWindowSettings();
  void WriteToRegistryActiveBarSettings() {}  // there is nothing to keep

  // ---- what stands where no window is open, and what is dropped there (frmMainPages.cpp)
  void UpdatePages();
  [[nodiscard]] RoadFacts FactsOfRoad() const;
  void OnFileDropped(const std::string& path);
  void ImportDropped(const std::string& path);
  // Connects, and makes a project of what the amplifier holds.
  void mnuFileReadAmplifier_Click();
  void mnuToolsSimulated_Click();

  // ---- projects as text, and side by side (frmMainText.cpp)
  void mnuFileExportText_Click();
  void mnuFileImportText_Click();
  void mnuFileCompare_Click();
  // ---- the history of transfers (frmMainHistory.cpp)
  void mnuViewHistory_Click();
  [[nodiscard]] bool MayDropTableEdits();
  [[nodiscard]] std::string ComparedFile(const std::string& path);
  struct ComparedSide {
    std::string title;
    std::string path;
  };
  void ShowCompared(const ComparedSide& first, const ComparedSide& second, bool takes);

  // ---- the programme without hardware (frmMainRehearsal.cpp)
  [[nodiscard]] frmRehearsal::Hooks HooksOfRehearsal();
  [[nodiscard]] clsHX7Project* ProjectToRehearse();
  void GoToStep(int step, bool front);

  // ---- the line (frmMainLine.cpp)
  [[nodiscard]] LineWorkplace::Hooks HooksOfLine();
  void mnuLineOpen_Click();
  void mnuLineSearch_Click();
  void mnuLineBack_Click();
  void mnuLineClose_Click();
  // Of the command line, or dropped.
  void OpenLine(const std::string& path);
  // False: the user keeps the project, or the file was refused.
  bool OpenLineFile(const std::string& path);
  // False: the user keeps the project.
  [[nodiscard]] bool CloseProjectForLine();
  void OpenAxis(const LineAxis& axis, const LineSettings& settings, bool present);
  void UpdateLine();

  // ---- project files (frmMainProject.cpp)
  void mnuFileNew_Click();
  // False: the user chose no file, or it was refused, of which the user was told.
  bool MakeNewProject(const std::string& proposedName);
  void mnuFileOpen_Click();
  void mnuFileClose_Click();
  void mnuFileSave_Click();
  // Offers to apply what was edited in windows (frmMainEdit.cpp): `offer` asks behind their names.
  // False: nothing shall be done.
  bool ApplyPending(const std::string& offer);
  // False: the file is not as this session knows it, and the user keeps it as it is.
  bool SaveProject();
  void mnuFileSaveAs_Click();
  void mnuFilePageSetup_Click() {}  // carries no behaviour
  void mnuFilePrint_Click();
  void mnuFileExit_Click();
  void OpenRecent(int place);
  void mnuFileMRU_Click(int Index);
  // True: the open failed. A Cancel or a refusal is no failure.
  bool FileInput(const std::string& fname);
  bool RemoveActiveProject();
  // Closes the present project, with the questions. False: refused.
  bool CloseForAnother(const std::string& strFileName, bool askIfSame);
  void DropProject();
  void MakeProject();
  // Opens `strFileName` in the place of what is open, once it is known to be a project; `reason` as
  // OpenInNewProject has it. False: the user keeps what is open.
  bool OpenInPlace(const std::string& strFileName, bool askIfSame,
                   std::optional<std::string>& reason);
  // Opens `strFileName` in a new project, one of a newer version for reading alone if the user
  // wishes. Nothing: it is open. Else the reason for a box, empty where the user would not.
  std::optional<std::string> OpenInNewProject(const std::string& strFileName);
  std::optional<std::string> TryToOpen(const std::string& strFileName, NewerProject newer,
                                       const std::string& unsaved = {});
  // Asks what becomes of work that a killed program had not saved; gives what TryToOpen does.
  std::optional<std::string> SettleUnsaved(const std::string& strFileName, NewerProject newer);
  // The connected motor and the values in doubt of a project that was just opened.
  void TellOfOpened();
  // Puts `boxLead` before the title; that of a new project begins with a blank.
  static void TellNotOpened(const std::string& reason, const std::string& boxLead,
                            const std::string& strFileName);
  void OpenChosenProject(const std::string& strFileName, const std::string& boxLead,
                         bool askIfSame);
  void ConnectProject();
  void clsProject_ProjectOpened();
  void clsProject_ProjectClosed();
  void clsProject_ProjectSavedAs();
  void AddRecentFile(const std::string& fname);
  void RemoveRecentFile(int Index);
  void LoadRecentFiles();
  void SaveRecentFiles();
  void UpdateRecentFileMenu();

  // ---- what operations tell (frmMainDesk.cpp)
  void WorkBegins(const std::string& caption, int steps, bool items) override;
  void WorkGoesOn(const WorkStep& step) override;
  void WorkEnds() override;
  void SearchGoesOn(std::int32_t bitsPerSecond, const std::string& axis, int tries) override;
  void SearchEnds() override;
  void StatusTold(const std::string& text) override { UpdateStatusText(text); }
  void LineChanged(LineState state) override;
  void ShowLine();
  void DifferencesFound(const std::vector<PartComparison>& parts) override;
  void DoubtsFound(clsHX7Project& project) override;
  [[nodiscard]] bool IsAttended() const override { return true; }
  void mnuToolsOnline_Click();
  // Asks the amplifier while nobody else does: no command, and no window on the live hardware.
  void WatchWhileIdle();
  void ReadFromRegistryWatchSettings();
  void mnuToolsIdleWatch_Click();
  void ReadFromRegistryAlarmLanguage();
  // The language holds for the next sessions too.
  void mnuViewGermanAlarms_Click();
  void ConnectByHandIf(HardwareConnection::Outcome outcome);
  // Ports and speeds of the menu of the connection. False: no such command.
  bool RunConnectionCommand(MainCommand command);
  // `search`: for axes, at once.
  void CommunicationsSettingsOpen(bool search = false);
  void clsProject_ResolutionDataInvalidated(const std::string& strItems);

  // ---- transfers, comparing (frmMainTransfers.cpp)
  // The commands that move one tool or one group. False: no such command.
  bool RunItemCommand(MainCommand command);
  void UploadItem(const TransferItem& item);
  // The buttons of a tool's window. What is sent is what the window shows.
  void RunRequest(Tool tool, WindowRequest what);
  void UploadFromWindow(Tool tool);
  void DownloadFromWindow(Tool tool);
  // The window that tries gains, above that of the gains.
  void TryGains();
  bool SendGains(const std::vector<std::string>& assignments);
  void RunWindowCommand(MainCommand command, const std::function<void()>& work);
  void LaunchUploadedToolWindows(const std::vector<Tool>& tools);
  void mnuToolsCompare_Click();
  // Reads the amplifier. False: stopped or failed.
  bool Compare();

  // ---- modules, tool windows, display (frmMainModules.cpp, frmMainTools.cpp)
  void mnuModuleTestRun_Click() { ChooseModule(Module::testRun); }
  void mnuModuleIndexer_Click() { ChooseModule(Module::indexer); }
  void mnuModuleTuning_Click() { ChooseModule(Module::tuning); }
  void mnuModuleMonitoring_Click() { ChooseModule(Module::monitoring); }
  void mnuModuleEditor_Click() { ChooseModule(Module::editor); }
  void ChooseModule(Module module);
  void ShowModule();
  bool UnloadModuleTools(Module eNotThisModule, bool& Cancel);
  // Unloads every form on show; false when one of them stayed.
  static bool UnloadAllForms();
  // The pattern of a blocking tool: flag, window, flag again.
  void OpenModalTool(ToolWindow tool, const std::string& prefix, const std::function<void()>& show);
  void SetToolOpened(ToolWindow tool, bool opened);
  // Opens a tool that stays beside the main window, and flags it as open.
  void OpenTool(ToolWindow window, const std::string& prefix, const std::function<bool()>& show);
  // ---- tools on the live hardware (frmMainOnlineTools.cpp)
  void ConnectOnlineTools();
  void mnuToolsMonitoring_Click();
  void mnuToolsTerminal_Click();
  void mnuToolsServoJog_Click();
  // Whether Pn80B keeps the servo on without being asked. The result of the question.
  ResultCode IsServoAlwaysOn(bool& bIsAlwaysOn);
  // The motor may be moved by hand: nothing keeps the servo on, and it is the project's, or the
  // user goes on with it. False: told, behind `cannot`.
  [[nodiscard]] bool MayMoveByHand(const std::string& cannot);
  void ServoJogOpenModal();
  void mnuToolsInertiaRatio_Click();
  void InertiaRatioOpenModal();
  void mnuToolsHomePosition_Click();
  void HomePositionOpenModal();
  void mnuToolsAlarms_Click();
  void mnuToolsRecordings_Click() { recordings_.Open(); }
  void mnuToolsProductInformation_Click();
  // False: another window uses the line, of which the user was told.
  [[nodiscard]] bool MayAskAmplifier(const std::string& what);
  void ProductInfoOpenModal();
  // The commands that open a tool beside the main window or upload one tool. False: no such
  // command.
  bool RunToolCommand(MainCommand command);
  // ---- the Edit menu (frmMainEdit.cpp)
  void ConnectEditMenu();
  // The active window as the Edit menu knows it; null where it has no such notion.
  [[nodiscard]] EditTarget* ActiveEditTarget();
  void UpdateEditIconToolButtons();
  void mnuEditCut_Click();
  void mnuEditCopy_Click();
  void mnuEditPaste_Click();
  void mnuEditUndo_Click();
  void mnuEditRedo_Click();
  void ShowToolBars();
  void ShowStatusBar();
  void mnuWindowCascade_Click() { window_->Arrange(Arrangement::cascade); }
  void mnuWindowTileHorizontal_Click() { window_->Arrange(Arrangement::tileHorizontal); }
  void mnuWindowTileVertical_Click() { window_->Arrange(Arrangement::tileVertical); }
  void mnuHelpContents_Click();
  void mnuHelpLog_Click();
  void mnuHelpLogTraffic_Click();
  void mnuHelpAbout_Click();

  SingleInstance& instance_;
  std::unique_ptr<MainWindow> window_;
  layouts::frmMain ui_{*window_};
  std::unique_ptr<Timer> tmrMessages_ = world().forms->NewTimer();
  std::unique_ptr<Timer> tmrPanels_ = world().forms->NewTimer();
  std::unique_ptr<Timer> tmrLine_ = world().forms->NewTimer();  // while the page of a line is up
  RecentFiles RecentFile;
  Module eSelectedModule = Module::testRun;
  std::array<bool, kToolWindows> toolOpened_{};
  std::unique_ptr<clsHX7Procedure> clsProcedure;
  std::unique_ptr<clsHX7Print> clsPrint;

  std::function<bool()> monitoringNotDone_;
  std::deque<std::string> messages_;
  std::string initialDirectory_;  // of the next file dialog; empty: where the last one ended
  bool started_ = false;
  bool inCommand_ = false;
  bool closeWhenStarted_ = false;
  bool searchShown_ = false;                   // the progress dialog is that of a search
  bool projectShown_ = false;                  // the menus and tools of an open project are offered
  LineState lineOfPage_ = LineState::offline;  // as the page shows it
  bool ready_ = false;                         // the session is built
  std::optional<std::vector<PartComparison>> compared_;  // the latest, until something is sent
  ProjectPage projectPage_{[this](MainCommand command) { OnCommand(command); }};
  StartPage startPage_{{.choose = [this](MainCommand command) { OnCommand(command); },
                        .open = [this](int place) { OpenRecent(place); }}};
  frmLog log_;
  frmRehearsal rehearsal_{HooksOfRehearsal()};
  // A transfer has the line for itself.
  Instruments instruments_{*this, [this] { return clsProcedure == nullptr; }};
  frmRecordings recordings_{instruments_};
  frmTryIt tryIt_{instruments_, [this](const std::vector<std::string>& assignments) {
                    return SendGains(assignments);
                  }};
  Operations operations_{*this, *this};
  LineWorkplace workplace_{*this, HooksOfLine()};
  std::optional<LineSettings> beforeLine_;  // of the session, before it talked to an axis of a line
  Connections connections_;
  Connections commandConnections_;
  Connections projectConnections_;
};

}  // namespace velmoor
